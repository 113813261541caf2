#include "operations/schedule/ScheduleRunner.h"

#include "operations/schedule/ApprovalResetRepository.h"
#include "operations/schedule/BackupPlanRepository.h"
#include "store/Clock.h"

#include <QDebug>

ScheduleRunner::ScheduleRunner(const Clock& clock, Starter& starter, Database* planDb)
    : m_clock(clock)
    , m_starter(starter)
    , m_planDb(planDb)
    , m_alive(std::make_shared<bool>(true))
{
    m_scheduler.setServer(planDb != nullptr);
}

void ScheduleRunner::setSchedule(const DailySchedule& schedule)
{
    m_scheduler.setSchedule(schedule);
}

void ScheduleRunner::tick()
{
    BackupPlan plan;
    readApprovalReset();
    const QList<ScheduledRun> due = m_scheduler.tick(m_clock.now(), readPlan(plan));
    for (const ScheduledRun run : due) {
        if (!m_waiting.contains(run))
            m_waiting.append(run);
    }
    startNext();
}

void ScheduleRunner::readApprovalReset()
{
    if (!m_planDb)
        return;
    ApprovalResetPlan reset;
    QString error;
    if (ApprovalResetRepository(*m_planDb).load(&reset, &error))
        m_scheduler.setApprovalReset(reset);
    else if (!error.isEmpty())
        qWarning().noquote() << "approval reset:" << error;
}

const BackupPlan* ScheduleRunner::readPlan(BackupPlan& plan)
{
    if (!m_planDb)
        return nullptr;
    BackupPlanRepository repository(*m_planDb);
    QString error;
    if (!repository.load(&plan, &error)) {
        qWarning().noquote() << "backup plan:" << error;
        return nullptr;
    }
    if (!plan.lastBackup.isValid()) {
        // Never backed up: the first period counts from today rather than removing records at once.
        if (!repository.saveLastBackup(m_clock.now().date(), &error))
            qWarning().noquote() << "backup plan:" << error;
        return nullptr;
    }
    return &plan;
}

void ScheduleRunner::startNext()
{
    if (m_underWay || m_waiting.isEmpty())
        return;
    // Taken off the list first: a starter may call `finished` before it returns.
    const ScheduledRun run = m_waiting.takeFirst();
    m_underWay = true;
    const std::weak_ptr<bool> alive = m_alive;
    const bool started = m_starter.start(run, [this, alive] {
        if (alive.expired())
            return;
        m_underWay = false;
        startNext();
    });
    if (!started) {
        // The worker is busy with something else: try again on the next tick.
        m_underWay = false;
        m_waiting.prepend(run);
    }
}
