// The scheduler driven without windows: the runner ticked by a clock set by hand starts its runs
// on a panel worker against simulated panels on loopback.

#include "operations/panels/PanelWorker.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "operations/schedule/ScheduleRunner.h"
#include "operations/schedule/WorkerRunStarter.h"
#include "store/Clock.h"
#include "support/ReadyStation.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDateTime Start(QDate(2026, 3, 16), QTime(5, 59, 59));
const QTime RunAt(6, 0, 0);

int usersOn(SimPanel* panel)
{
    int count = 0;
    panel->inspect([&](const SimPanelState& s) { count = int(s.users.size()); });
    return count;
}

} // namespace

class WorkerRunsTest : public QObject
{
    Q_OBJECT

private slots:
    void dailyRunsAndBackupOnTheWorker()
    {
        KX_READY_STATION(f);
        SimPanel* panel = f.addPanel(1);
        QVERIFY(panel);
        for (int id = 1; id <= 4; ++id)
            f.addUser(id, 2000 + id);
        panel->seedRecords(30, QDateTime(QDate(2026, 3, 14), QTime(8, 0)));
        f.settings().workingMode = StationSettings::Server;

        PanelWorker worker;
        QString error;
        QVERIFY2(worker.start(f.db(), PanelLink::Settings(), &error), qPrintable(error));
        ManualClock clock(Start);
        QTemporaryDir backups;
        WorkerRunStarter::Setup setup;
        setup.settings = f.settings();
        setup.backupFolder = backups.path();
        setup.eraseAfterRetrieval = true;
        setup.clock = &clock;
        WorkerRunStarter starter(worker, f.op(), f.session(), f.roster(), setup);
        ScheduleRunner runner(clock, starter, &f.db());
        runner.setSchedule({ true, RunAt, true, RunAt });

        // One tick in the window starts the send, then the retrieval once the send has ended.
        runner.tick();
        QVERIFY(runner.runUnderWay());
        QTRY_VERIFY_WITH_TIMEOUT(!runner.runUnderWay(), 60000);
        QCOMPARE(usersOn(panel), 4);
        QCOMPARE(f.db().scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toInt(), 30);
        QCOMPARE(panel->recordCount(), 0);
        QVERIFY(f.op().questions().isEmpty());

        // A month on, the server's backup runs on the worker, removes the records of earlier
        // months and notes the day.
        clock.set(QDateTime(QDate(2026, 4, 16), QTime(12, 0)));
        runner.tick();
        QTRY_VERIFY_WITH_TIMEOUT(!runner.runUnderWay(), 60000);
        QCOMPARE(QDir(backups.path()).entryList(QDir::Files).size(), 1);
        QCOMPARE(f.db().scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toInt(), 0);
        BackupPlan plan;
        QVERIFY(BackupPlanRepository(f.db()).load(&plan));
        QCOMPARE(plan.lastBackup, QDate(2026, 4, 16));
        worker.stop();
    }
};

QTEST_GUILESS_MAIN(WorkerRunsTest)
#include "tst_WorkerRuns.moc"
