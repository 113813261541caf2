#include "operations/backup/BackupCheck.h"
#include "operations/backup/BackupCopy.h"
#include "operations/backup/BackupOperations.h"
#include "operations/backup/DumpTableReader.h"
#include "operations/backup/PassageBackup.h"
#include "operations/backup/PostgresTools.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/schedule/BackupPlan.h"
#include "protocol/PanelLink.h"
#include "store/Clock.h"
#include "store/OperatorSession.h"
#include "store/StationSettings.h"
#include "support/ScriptedOperator.h"
#include "support/TestDatabases.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDateTime Now(QDate(2026, 3, 16), QTime(2, 0, 0));
const QDateTime Cutoff = BackupPlan::removalCutoff(Now.date());

bool addPassages(Database& db, const QList<QDateTime>& times, QString* error)
{
    QList<QVariantList> rows;
    int n = 0;
    for (const QDateTime& time : times)
        rows << QVariantList{ 1, 1, 100 + n, 5000 + n++, db.toSql(time), 0, 1 };
    return db.insertRows(u"AccessDatas"_s,
                         { u"Panel ID"_s, u"Kapi ID"_s, u"ID"_s, u"Kart ID"_s, u"Tarih"_s, u"Gecis Tipi"_s, u"Kod"_s },
                         rows, error);
}

qint64 stored(const Database& db)
{
    return db.scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toLongLong();
}

// Five passages dated before the cut-off (two of them on the first day of the month), three not.
QList<QDateTime> samplePassages()
{
    return { QDateTime(QDate(2026, 1, 15), QTime(9, 0)),       QDateTime(QDate(2026, 2, 27), QTime(17, 30)),
             QDateTime(QDate(2026, 2, 28), QTime(23, 59, 59)), QDateTime(QDate(2026, 3, 1), QTime(8, 0)),
             QDateTime(QDate(2026, 3, 1), QTime(23, 59, 58)),  QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59)),
             QDateTime(QDate(2026, 3, 2), QTime(0, 0)),        QDateTime(QDate(2026, 3, 15), QTime(12, 0)) };
}

bool toolsFor(const Database& db)
{
    return !db.isPostgreSQL()
        || (!PostgresTools::program(u"pg_dump"_s).isEmpty() && !PostgresTools::program(u"pg_restore"_s).isEmpty());
}

} // namespace

class PassageBackupTest : public QObject
{
    Q_OBJECT

private slots:
    void checkedBackupThenRemoval_data() { TestDatabases::addEngineRows(); }
    void checkedBackupThenRemoval()
    {
        KX_OPEN_FRESH_DATABASE(dbs, db);
        QString error;
        if (!toolsFor(db))
            QSKIP("pg_dump and pg_restore are not installed (postgresql-client)");
        // Committed rows that SQLite still keeps in its write-ahead log: a copy of the database
        // file would miss them.
        QVERIFY2(addPassages(db, samplePassages(), &error), qPrintable(error));
        const QString folder = dbs.tempPath() + u"/Yedek"_s;

        PassageBackup backup(db, folder);
        const PassageBackup::Result result = backup.backupAndRemove(Cutoff, Now);
        QVERIFY2(result.ok, qPrintable(result.detail));
        const QString expectedName
            = u"Yedek-01_03_2026 - 16_03_26_02_00_00"_s + (db.isPostgreSQL() ? u".dump"_s : u".db"_s);
        QCOMPARE(QFileInfo(result.backupPath).fileName(), expectedName);
        QCOMPARE(result.message.turkish(),
                 u"Yedekleme başarı ile tamamlandı.\n"_s + result.backupPath + u"\n5 eski geçiş kaydı silindi."_s);
        QCOMPARE(stored(db), 3);
        QCOMPARE(Database::dateTime(db.scalar(u"SELECT min(\"Tarih\") FROM \"AccessDatas\""_s)),
                 QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59)));

        // The backup, read again, holds every passage of the moment it was made. Reading it
        // (here, and by the check before the removal) leaves the file as it was made: a plain
        // database, not turned into one with a write-ahead log, and nothing written beside it.
        const BackupCheck::Summary summary = BackupCheck::read(result.backupPath);
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{ expectedName });
        if (db.isSQLite()) {
            Database copy;
            QVERIFY2(copy.open(result.backupPath, Database::OpenMode::ReadOnly, &error), qPrintable(error));
            QCOMPARE(copy.scalar(u"PRAGMA journal_mode"_s).toString(), u"delete"_s);
            copy.close();
        }
        QVERIFY2(summary.ok, qPrintable(summary.error));
        QCOMPARE(summary.passages, 8);
        QCOMPARE(summary.oldest, samplePassages().first());
        QCOMPARE(summary.newest, samplePassages().last());

        // A second backup in the same second gets a name of its own; nothing is left to remove.
        const PassageBackup::Result again = backup.backupAndRemove(Cutoff, Now);
        QVERIFY2(again.ok, qPrintable(again.detail));
        QCOMPARE(again.removed, 0);
        const PassageBackup::Result plain = backup.backup(Now);
        QVERIFY2(plain.ok, qPrintable(plain.detail));
        QCOMPARE(plain.passagesInBackup, 3);
        QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 3);
    }

    void aBackupThatFailsItsCheckRemovesNothing_data() { TestDatabases::addEngineRows(); }
    void aBackupThatFailsItsCheckRemovesNothing()
    {
        KX_OPEN_FRESH_DATABASE(dbs, db);
        QString error;
        if (!toolsFor(db))
            QSKIP("pg_dump and pg_restore are not installed (postgresql-client)");
        QVERIFY2(addPassages(db, samplePassages(), &error), qPrintable(error));
        const QString folder = dbs.tempPath() + u"/Yedek"_s;

        // An old passage stored after the copy was made: the copy no longer holds all it would remove.
        PassageBackup late(db, folder);
        late.setCopyMaker([](Database& main, const QString& into, const QDateTime& moment) {
            BackupCopy::Result copy = BackupCopy::make(main, into, moment);
            QString ignored;
            addPassages(main, { QDateTime(QDate(2025, 12, 31), QTime(10, 0)) }, &ignored);
            return copy;
        });
        PassageBackup::Result result = late.backupAndRemove(Cutoff, Now);
        QVERIFY(!result.ok && result.backedUp);
        QCOMPARE(result.message.turkish(), u"Yedek doğrulanamadı, hiçbir kayıt silinmedi!"_s);
        QCOMPARE(stored(db), 9);

        // A copy that cannot be read.
        PassageBackup damaged(db, folder);
        damaged.setCopyMaker([](Database& main, const QString& into, const QDateTime& moment) {
            BackupCopy::Result copy = BackupCopy::make(main, into, moment);
            QFile file(copy.path);
            if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
                file.write(QByteArray(4096, 'x'));
            return copy;
        });
        result = damaged.backupAndRemove(Cutoff, Now);
        QCOMPARE(result.message, PassageBackup::verifyFailedMessage());
        QVERIFY(!result.detail.isEmpty());
        QCOMPARE(stored(db), 9);

        // A backup folder that cannot be made (a file stands in its place): no copy, nothing removed.
        const QString blocked = dbs.tempPath() + u"/blocked"_s;
        {
            QFile file(blocked);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        result = PassageBackup(db, blocked + u"/Yedek"_s).backupAndRemove(Cutoff, Now);
        QVERIFY(!result.ok && !result.backedUp);
        QCOMPARE(result.message.turkish(),
                 u"Yedek klasörüne yazılamıyor!\n"_s + QDir::toNativeSeparators(blocked + u"/Yedek"_s)
                     + u"\nHiçbir kayıt silinmedi."_s);
        QCOMPARE(stored(db), 9);
    }

    void removalByHandFollowsTheRules()
    {
        TestDatabases dbs;
        Database db;
        QString error;
        QVERIFY2(dbs.openFresh(TestDatabases::SQLite, db, true, &error), qPrintable(error));
        QVERIFY2(addPassages(db, samplePassages(), &error), qPrintable(error));
        const QString folder = dbs.tempPath() + u"/Yedek"_s;
        PanelLink link;
        PanelRoster roster;
        ManualClock clock(Now);
        OperatorSession session(clock);
        StationSettings settings;
        ScriptedOperator op;
        OperationContext context{ db, link, op, session, settings, roster, clock };
        const QDate before(2026, 3, 1);

        // A client station neither backs up nor removes.
        settings.workingMode = StationSettings::Client;
        QCOMPARE(BackupOperations(context, folder).removeBefore(before).outcome, BackupOperations::Outcome::Refused);
        QCOMPARE(BackupOperations(context, folder).backupNow().outcome, BackupOperations::Outcome::Refused);
        QCOMPARE(op.told(), QStringList(2, u"Bu işlem ancak server üzerinde yapılabilir"_s));

        // The question first, then administrator rights.
        settings.workingMode = StationSettings::Server;
        op.clearRecords();
        op.no();
        QCOMPARE(BackupOperations(context, folder).removeBefore(before).outcome, BackupOperations::Outcome::Declined);
        QCOMPARE(op.questions(),
                 QStringList{ u"01/03/2026 tarihinden önceki geçiş kayıtları yedek alındıktan sonra "
                              "silinecek. Devam etmek istiyor musunuz?"_s });
        op.yes();
        QCOMPARE(BackupOperations(context, folder).removeBefore(before).outcome, BackupOperations::Outcome::NoRights);
        QCOMPARE(op.lastTold(), u"Yetki hatası, Yönetici şifresi gerekli!"_s);
        QCOMPARE(stored(db), 8);
        QVERIFY(!QFileInfo::exists(folder) || QDir(folder).isEmpty());

        session.logInAsAdministrator(u"admin"_s);
        op.yes();
        const BackupOperations::Result done = BackupOperations(context, folder).removeBefore(before);
        QCOMPARE(done.outcome, BackupOperations::Outcome::Done);
        QCOMPARE(done.backup.removed, 3);
        QCOMPARE(op.lastTold(), done.backup.message.turkish());
        QCOMPARE(stored(db), 5);
    }

    void dumpDataLinesAreRead()
    {
        // A real dump's lines are read by the PostgreSQL run above; escapes it rarely holds are read here.
        QVERIFY(DumpTableReader::copyField(u"\\N"_s).isNull());
        QCOMPARE(DumpTableReader::copyField(u"a\\tb\\\\c"_s), u"a\tb\\c"_s);
    }
};

QTEST_GUILESS_MAIN(PassageBackupTest)
#include "tst_PassageBackup.moc"
