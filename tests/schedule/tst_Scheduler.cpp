// The scheduler's decisions tick by tick with a clock set by hand, and the runner that starts them,
// by hand and on the panel worker.
#include "operations/panels/PanelWorker.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "operations/schedule/DailyScheduler.h"
#include "operations/schedule/ScheduleRunner.h"
#include "operations/schedule/WorkerRunStarter.h"
#include "store/Clock.h"
#include "support/ReadyStation.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDate Day(2026, 3, 16);
const QTime SendAt(8, 0, 0);

QDateTime at(const QTime& time, int addDays = 0, int ms = 0)
{
    return QDateTime(Day.addDays(addDays), time).addMSecs(ms);
}

DailySchedule sendOnly(const QTime& time = SendAt)
{
    return { true, time, false, QTime() };
}

// A worker that the test frees by hand.
class FakeStarter : public ScheduleRunner::Starter
{
public:
    bool start(ScheduledRun run, std::function<void()> finished) override
    {
        if (busy)
            return false;
        started << run;
        m_finished = std::move(finished);
        return true;
    }
    void finish() { std::exchange(m_finished, {})(); }

    bool busy = false;
    QList<ScheduledRun> started;

private:
    std::function<void()> m_finished;
};

int usersOn(SimPanel* panel)
{
    int count = 0;
    panel->inspect([&](const SimPanelState& s) { count = int(s.users.size()); });
    return count;
}

} // namespace

class SchedulerTest : public QObject
{
    Q_OBJECT

private slots:
    void windowIsTheTwoSecondsBeforeTheSetTime()
    {
        // (tick offset from T in ms, starts?) at both edges: the tick's time counts in whole seconds.
        const QList<QPair<int, bool>> cases = { { -2001, false }, { -2000, true }, { 999, true }, { 1000, false } };
        for (const auto& [offset, starts] : cases) {
            DailyScheduler scheduler;
            scheduler.setSchedule(sendOnly());
            const QList<ScheduledRun> runs = scheduler.tick(at(SendAt, 0, offset));
            QVERIFY2(runs == (starts ? QList{ ScheduledRun::DailySend } : QList<ScheduledRun>{}),
                     qPrintable(u"tick at T%1 ms"_s.arg(offset)));
        }
        // Switched off, nothing starts.
        DailyScheduler off;
        off.setSchedule({ false, SendAt, false, QTime() });
        QVERIFY(off.tick(at(SendAt)).isEmpty());
    }

    void eachDaysRunStartsOnce()
    {
        DailyScheduler scheduler;
        scheduler.setSchedule(sendOnly());
        ManualClock clock(at(SendAt.addSecs(-2)));
        int starts = 0;
        // Every tick of the window, a second tick in the same second, and a clock set back over T.
        for (const int step : { 0, 0, 1, 1, -2, 1 }) {
            clock.advanceSecs(step);
            starts += int(scheduler.tick(clock.now()).size());
        }
        clock.set(at(SendAt.addSecs(30)));
        starts += int(scheduler.tick(clock.now()).size());
        clock.set(at(SendAt.addSecs(-1)));
        starts += int(scheduler.tick(clock.now()).size());
        QCOMPARE(starts, 1);

        // A clock jumping forwards over T does not catch the run up, nor does a late start.
        clock.set(at(SendAt.addSecs(-10), 1));
        QVERIFY(scheduler.tick(clock.now()).isEmpty());
        clock.set(at(SendAt.addSecs(10), 1));
        QVERIFY(scheduler.tick(clock.now()).isEmpty());
        DailyScheduler lateStart;
        lateStart.setSchedule(sendOnly());
        QVERIFY(lateStart.tick(at(SendAt.addSecs(60))).isEmpty());

        // The next day starts again, and so does a new time set the same day.
        QCOMPARE(scheduler.tick(at(SendAt, 2)), QList{ ScheduledRun::DailySend });
        scheduler.setSchedule(sendOnly(QTime(9, 0)));
        QCOMPARE(scheduler.tick(at(QTime(9, 0), 2)), QList{ ScheduledRun::DailySend });

        // Around midnight: 23:59:59 holds 00:00:00 of the next day, which then starts no more.
        scheduler.setSchedule(sendOnly(QTime(0, 0)));
        QCOMPARE(scheduler.tick(at(QTime(23, 59, 59), 3)), QList{ ScheduledRun::DailySend });
        QVERIFY(scheduler.tick(at(QTime(0, 0), 4)).isEmpty());
    }

    void sendAndRetrievalOnOneTickInOrder()
    {
        DailyScheduler scheduler;
        DailySchedule both = sendOnly();
        both.retrievalOn = true;
        both.retrievalTime = SendAt;
        scheduler.setSchedule(both);
        QCOMPARE(scheduler.tick(at(SendAt.addSecs(-1))),
                 (QList{ ScheduledRun::DailySend, ScheduledRun::DailyRetrieval }));

        // The runner starts them one after the other; one that comes due while the worker is busy
        // with something else waits for it.
        ManualClock clock(at(SendAt.addSecs(-1), 1));
        FakeStarter worker;
        ScheduleRunner runner(clock, worker);
        runner.setSchedule(both);
        worker.busy = true;
        runner.tick();
        QVERIFY(worker.started.isEmpty());
        QCOMPARE(runner.waiting().size(), 2);
        worker.busy = false;
        clock.advanceSecs(5);
        runner.tick();
        QCOMPARE(worker.started, QList{ ScheduledRun::DailySend });
        runner.tick();
        QCOMPARE(worker.started.size(), 1);
        worker.finish();
        QCOMPARE(worker.started, (QList{ ScheduledRun::DailySend, ScheduledRun::DailyRetrieval }));
        worker.finish();
        QVERIFY(!runner.runUnderWay() && runner.waiting().isEmpty());
    }

    void periodicBackupOnTheServerOnly()
    {
        BackupPlan plan;
        plan.lastBackup = QDate(2023, 1, 31);
        plan.periodMonths = 1;
        plan.day = 31;
        DailyScheduler client;
        QVERIFY(client.tick(QDateTime(QDate(2023, 2, 28), QTime(10, 0)), &plan).isEmpty());

        // February is shorter than the 31st: its last day takes the backup, once that day.
        DailyScheduler server;
        server.setServer(true);
        QVERIFY(server.tick(QDateTime(QDate(2023, 2, 27), QTime(23, 59)), &plan).isEmpty());
        QCOMPARE(server.tick(QDateTime(QDate(2023, 2, 28), QTime(0, 0)), &plan), QList{ ScheduledRun::PeriodicBackup });
        QVERIFY(server.tick(QDateTime(QDate(2023, 2, 28), QTime(0, 0, 1)), &plan).isEmpty());
        // Not recorded as done (it failed): the next day tries again.
        QCOMPARE(server.tick(QDateTime(QDate(2023, 3, 1), QTime(0, 0)), &plan), QList{ ScheduledRun::PeriodicBackup });

        // A period of months from the last backup, then the chosen day of the month.
        plan = { QDate(2023, 5, 20), 3, 10 };
        QVERIFY(!plan.isDue(QDate(2023, 8, 19)));
        QVERIFY(plan.isDue(QDate(2023, 8, 20)));
        plan.day = 25;
        QVERIFY(!plan.isDue(QDate(2023, 8, 24)));
        QVERIFY(!BackupPlan{}.isDue(QDate(2023, 8, 25)));
        QCOMPARE(BackupPlan::removalCutoff(QDate(2024, 2, 29)), QDateTime(QDate(2024, 2, 1), QTime(23, 59, 59)));
    }

    // The runner on a panel worker against simulated panels on loopback.
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
        ManualClock clock(QDateTime(Day, QTime(5, 59, 59)));
        QTemporaryDir backups;
        WorkerRunStarter::Setup setup;
        setup.settings = f.settings();
        setup.backupFolder = backups.path();
        setup.eraseAfterRetrieval = true;
        setup.clock = &clock;
        WorkerRunStarter starter(worker, f.op(), f.session(), f.roster(), setup);
        ScheduleRunner runner(clock, starter, &f.db());
        runner.setSchedule({ true, QTime(6, 0), true, QTime(6, 0) });

        // One tick in the window starts the send, then the retrieval once the send has ended.
        runner.tick();
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

QTEST_MAIN(SchedulerTest)
#include "tst_Scheduler.moc"
