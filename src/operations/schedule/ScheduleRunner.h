#pragma once

#include "operations/schedule/DailyScheduler.h"

#include <QList>
#include <functional>
#include <memory>

class Clock;
class Database;

// Drives the scheduler from a clock tick and starts what it decides, one run at a time, through
// whoever owns the panel worker: the main window, the service without windows, a test. It shows
// nothing itself.
//
// Runs are started in the order they came due. A run that comes due while another scheduled run
// or any other panel operation is under way waits and starts as soon as the worker is free, so a
// long send does not cost the day's retrieval, and no two runs ever overlap.
class ScheduleRunner
{
public:
    // Starts one run on the worker and calls `finished` (on the owner's thread) when it has
    // ended; returns false, without calling it, when the worker is busy.
    class Starter
    {
    public:
        virtual ~Starter() = default;
        virtual bool start(ScheduledRun run, std::function<void()> finished) = 0;
    };

    // planDb: where a server station reads its backup plan on every tick; null on a client.
    ScheduleRunner(const Clock& clock, Starter& starter, Database* planDb = nullptr);

    void setSchedule(const DailySchedule& schedule);
    const DailySchedule& schedule() const { return m_scheduler.schedule(); }

    // One tick: asks the scheduler with the clock's time and starts the next waiting run.
    void tick();

    bool runUnderWay() const { return m_underWay; }
    const QList<ScheduledRun>& waiting() const { return m_waiting; }

private:
    const BackupPlan* readPlan(BackupPlan& plan);
    void readApprovalReset();
    void startNext();

    const Clock& m_clock;
    Starter& m_starter;
    Database* m_planDb = nullptr;
    DailyScheduler m_scheduler;
    QList<ScheduledRun> m_waiting;
    bool m_underWay = false;
    // Goes with the runner, so that a run ending later does not touch a dead runner.
    std::shared_ptr<bool> m_alive;
};
