// The reports' connections kept from one report to the next: a kept connection reads what was
// stored since, a connection the server dropped is replaced, another database gets its own, and
// a backup chosen for the reports is only ever read.

#include "ReportFixture.h"
#include "reports/BackupDatabase.h"
#include "reports/ReportBuilder.h"
#include "reports/ReportConnections.h"
#include "reports/ReportCount.h"
#include "reports/ReportRowSource.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ReportConnectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { ReportConnections::closeAll(); }

    void keptConnectionReadsTheDatabaseAsItIsNow_data() { TestDatabases::addEngineRows(); }
    void keptConnectionReadsTheDatabaseAsItIsNow()
    {
        KX_OPEN_FRESH_DATABASE(dbs, db);
        QString error;
        QVERIFY2(ReportFixture::seed(db, &error), qPrintable(error));
        const ReportFilter all;

        // One connection serves report after report.
        std::unique_ptr<Database> first = ReportConnections::take(db);
        const QString name = first->connectionName();
        ReportConnections::giveBack(std::move(first));
        std::unique_ptr<Database> again = ReportConnections::take(db);
        QCOMPARE(again->connectionName(), name);
        ReportConnections::giveBack(std::move(again));

        // Reports left half read, in both ways of reading, leave nothing open that hides later rows.
        for (const auto reading : { ReportRowSource::Reading::Screens, ReportRowSource::Reading::Through }) {
            ReportRowSource half;
            QVERIFY(half.open(db, ReportBuilder::build(db, ReportKind::Access, all), &error, reading));
            QCOMPARE(half.fetch(2).size(), 2);
        }
        QVERIFY2(ReportFixture::addRepeats(db, &error), qPrintable(error));
        const QList<QVariantList> kept = ReportFixture::rows(db, ReportKind::Access, all, &error);
        QCOMPARE(ReportConnections::keptCount(), 1);
        ReportConnections::closeAll();
        const QList<QVariantList> fresh = ReportFixture::rows(db, ReportKind::Access, all, &error);
        QCOMPARE(kept, fresh);

        // A server connection that was dropped while kept is replaced.
        if (db.isPostgreSQL()) {
            std::unique_ptr<Database> idle = ReportConnections::take(db);
            QVERIFY(idle);
            const QVariant pid = idle->scalar(u"SELECT pg_backend_pid()"_s);
            ReportConnections::giveBack(std::move(idle));
            QVERIFY(db.scalar(u"SELECT pg_terminate_backend(?)"_s, { pid }).toBool());
            QCOMPARE(ReportFixture::rows(db, ReportKind::Access, all, &error), fresh);
            QVERIFY2(error.isEmpty(), qPrintable(error));
        }

        // Another database is read over a connection of its own.
        Database other;
        QVERIFY2(
            dbs.openFresh(TestDatabases::Engine(db.engine() == Database::Engine::SQLite ? 0 : 1), other, true, &error),
            qPrintable(error));
        QVERIFY(ReportFixture::rows(other, ReportKind::Access, all, &error).isEmpty());
        QCOMPARE(ReportFixture::rows(db, ReportKind::Access, all, &error), fresh);
        ReportConnections::closeAll();
        other.close();
    }

    void backupIsOnlyRead()
    {
        // A backup file as the backup makes it: the ordinary journal, no write-ahead log.
        TestDatabases dbs;
        Database made;
        QString error;
        QVERIFY2(dbs.openFresh(TestDatabases::SQLite, made, true, &error), qPrintable(error));
        QVERIFY2(ReportFixture::seed(made, &error), qPrintable(error));
        QVERIFY(made.exec(u"PRAGMA journal_mode=DELETE"_s));
        const QString path = made.location();
        made.close();

        Database main;
        QVERIFY2(dbs.openFresh(TestDatabases::SQLite, main, true, &error), qPrintable(error));
        BackupDatabase backup;
        QVERIFY2(backup.open(path, nullptr, &error), qPrintable(error));
        const Database& chosen = backup.choose(main);
        const ReportStatement statement = ReportBuilder::build(chosen, ReportKind::Access, ReportFilter());
        const qsizetype shown = ReportFixture::rows(chosen, ReportKind::Access, ReportFilter(), &error).size();
        QVERIFY(shown > 0);
        QCOMPARE(ReportCount::start(chosen, statement).result(), shown);
        // Neither the backup's own connection nor the one kept for reports can change it.
        QVERIFY(!chosen.exec(u"DELETE FROM \"AccessDatas\""_s));
        std::unique_ptr<Database> kept = ReportConnections::take(chosen);
        QVERIFY(kept && !kept->exec(u"DELETE FROM \"AccessDatas\""_s));
        ReportConnections::giveBack(std::move(kept));
        backup.close();
        QCOMPARE(ReportConnections::keptCount(), 0);

        Database look;
        QVERIFY(look.open(path, Database::OpenMode::ReadOnly, &error));
        QCOMPARE(look.scalar(u"PRAGMA journal_mode"_s).toString(), u"delete"_s);
        QVERIFY(look.scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toLongLong() > 0);
        look.close();
        main.close();
    }
};

QTEST_GUILESS_MAIN(ReportConnectionsTest)
#include "tst_ReportConnections.moc"
