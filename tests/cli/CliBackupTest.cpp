// kx410ctl's backups, removal of old records and schedule settings, run as a script would.

#include "CliRunner.h"
#include "store/ConfigFile.h"
#include "store/DataFolder.h"
#include "store/Database.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// Passages written straight into the station's database while no kx410ctl runs.
bool addPassages(const QString& location, const QList<QDateTime>& times)
{
    Database db;
    if (!db.open(location, Database::OpenMode::ExistingOnly))
        return false;
    QList<QVariantList> rows;
    int n = 0;
    for (const QDateTime& time : times)
        rows << QVariantList{ 1, 1, 10 + n, 900 + n++, db.toSql(time), 0, 1 };
    const bool ok = db.insertRows(
        u"AccessDatas"_s, { u"Panel ID"_s, u"Kapi ID"_s, u"ID"_s, u"Kart ID"_s, u"Tarih"_s, u"Gecis Tipi"_s, u"Kod"_s },
        rows);
    db.close();
    return ok;
}

qint64 storedIn(const QString& location)
{
    Database db;
    if (!db.open(location, Database::OpenMode::ExistingOnly))
        return -1;
    const qint64 count = db.scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toLongLong();
    db.close();
    return count;
}

} // namespace

class CliBackupTest : public QObject
{
    Q_OBJECT

private slots:
    void scheduleSettings()
    {
        CliRunner cli;
        QVERIFY(cli.setUpServer());
        const DataFolder folder(cli.dataDir());

        // A time of day that does not exist is refused before anything is touched.
        CliRunner::Result r = cli.run("schedule set --send on --send-time 25:61");
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(u"\"25:61\" is not a time of day"_s), qPrintable(r.err));
        QVERIFY(!ConfigFile::read(folder.configFile()).settings.dailySendOn);

        // The backup settings lead to records being removed: administrator rights first.
        QCOMPARE(cli.mismatch({ { "schedule set --backup-day 32", 2, false },
                                { "schedule set --send-changed maybe", 2, false },
                                { "schedule set", 2, false },
                                { "schedule set --send on --send-time 06:30 --send-changed on --receive on "
                                  "--receive-time 23:00:15",
                                  0, false },
                                { "schedule set --backup-period 3 --backup-day 31", 4, false },
                                { "schedule set --backup-period 3 --backup-day 31", 0 } }),
                 QString());
        QCOMPARE(
            cli.run("schedule show").out,
            u"daily-send=on 06:30:00\ndaily-send-changed=on\ndaily-receive=on 23:00:15\nbackup-period=3\nbackup-day=31\nlast-backup=-\n"_s);
    }

    void backupsAndRemovalByHand()
    {
        CliRunner cli;
        QVERIFY(cli.setUpServer());
        const DataFolder folder(cli.dataDir());
        QVERIFY(addPassages(folder.mainDatabase(),
                            { QDateTime(QDate(2026, 1, 5), QTime(8, 0)), QDateTime(QDate(2026, 2, 28), QTime(18, 0)),
                              QDateTime(QDate(2026, 3, 1), QTime(0, 0)), QDateTime(QDate(2026, 3, 2), QTime(9, 0)) }));

        CliRunner::Result r = cli.run("backup now");
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
        // The station's message, then the result line.
        QVERIFY2(r.out.startsWith(u"Yedekleme başarı ile tamamlandı.\n"_s), qPrintable(r.out));
        const QString result = r.out.trimmed().section(u'\n', -1);
        QVERIFY2(result.startsWith(u"backup="_s + QDir::toNativeSeparators(folder.backupFolder() + u"/Yedek-"_s)),
                 qPrintable(result));
        QVERIFY(result.endsWith(u".db passages=4"_s));
        r = cli.run("backup verify");
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
        QVERIFY2(r.out.contains(u"passages=4 oldest=2026-01-05 08:00:00 newest=2026-03-02 09:00:00"_s),
                 qPrintable(r.out));

        // The removal needs rights, and removes only after its own checked backup.
        QCOMPARE(cli.mismatch({ { "--yes records delete --before 2026-03-01", 4, false },
                                { "records delete --before 2026-02-30", 2, false } }),
                 QString());
        QCOMPARE(storedIn(folder.mainDatabase()), 4);

        r = cli.runAsAdmin("--yes records delete --before 2026-03-01");
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
        QVERIFY2(r.out.trimmed().endsWith(u"removed=2"_s), qPrintable(r.out));
        QCOMPARE(storedIn(folder.mainDatabase()), 2);

        QCOMPARE(cli.listed("backup list").size(), 2);
        // The removal's backup holds the removed records, which the main database no longer does.
        r = cli.run("backup verify --before 2026-03-01");
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.out.contains(u"before=2 main-before=0"_s), qPrintable(r.out));
        r = cli.run({ u"backup"_s, u"verify"_s, folder.backupFolder() + u"/Yedek-none.db"_s });
        QCOMPARE(r.exitCode, 1);
    }

    void clientStationDoesNotBackUp()
    {
        CliRunner server;
        QVERIFY(server.setUpServer());
        CliRunner client;
        const QString remote = DataFolder(server.dataDir()).mainDatabase();
        QCOMPARE(client.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, remote }).exitCode, 0);
        // The refusal itself is the backup's own test.
        QCOMPARE(client.run("backup now").exitCode, 1);
    }
};

QTEST_GUILESS_MAIN(CliBackupTest)
#include "CliBackupTest.moc"
