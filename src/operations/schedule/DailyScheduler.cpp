#include "operations/schedule/DailyScheduler.h"

namespace {

QTime wholeSeconds(const QTime& time)
{
    return QTime(time.hour(), time.minute(), time.second());
}

} // namespace

void DailyScheduler::setSchedule(const DailySchedule& schedule)
{
    m_schedule = schedule;
}

void DailyScheduler::setApprovalReset(const ApprovalResetPlan& plan)
{
    m_reset = plan;
}

void DailyScheduler::setServer(bool server)
{
    m_server = server;
}

QList<ScheduledRun> DailyScheduler::tick(const QDateTime& now, const BackupPlan* plan)
{
    QList<ScheduledRun> runs;
    if (dailyDue(now, m_schedule.sendOn, m_schedule.sendTime, m_sendStarted))
        runs << ScheduledRun::DailySend;
    if (dailyDue(now, m_schedule.retrievalOn, m_schedule.retrievalTime, m_retrievalStarted))
        runs << ScheduledRun::DailyRetrieval;
    if (m_server && plan && m_backupTried != now.date() && plan->isDue(now.date())) {
        m_backupTried = now.date();
        runs << ScheduledRun::PeriodicBackup;
    }
    if (m_server && dailyDue(now, m_reset.on, m_reset.time, m_resetStarted))
        runs << ScheduledRun::ApprovalReset;
    return runs;
}

bool DailyScheduler::dailyDue(const QDateTime& now, bool on, const QTime& setTime, QDateTime& lastStarted)
{
    if (!on || !setTime.isValid())
        return false;
    const QDateTime moment = occurrence(now, setTime);
    if (!moment.isValid() || moment == lastStarted)
        return false;
    lastStarted = moment;
    return true;
}

QDateTime DailyScheduler::occurrence(const QDateTime& now, const QTime& setTime)
{
    if (!now.isValid() || !setTime.isValid())
        return QDateTime();
    // Compared on wall-clock readings, as the operator set them: no time zone arithmetic.
    const QDateTime t(now.date(), wholeSeconds(now.time()));
    const QDateTime end = t.addSecs(WindowSeconds);
    for (const QDate& day : { now.date(), now.date().addDays(1) }) {
        const QDateTime candidate(day, wholeSeconds(setTime));
        if (t <= candidate && candidate <= end)
            return candidate;
    }
    return QDateTime();
}
