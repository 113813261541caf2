#pragma once

#include "operations/schedule/ApprovalResetPlan.h"
#include "operations/schedule/BackupPlan.h"
#include "operations/schedule/DailySchedule.h"
#include "operations/schedule/ScheduledRun.h"

#include <QDate>
#include <QDateTime>
#include <QList>

// Decides, tick by tick, which scheduled runs start. Nothing else: no clock, no database, no
// panel; the owner hands in the tick's time and the backup plan and starts what comes back.
//
// A daily run starts on a tick whose time of day t (whole seconds) satisfies t <= T <= t + 2 s
// for its set time T: the last two seconds before T and T itself, so that a late tick is not
// missed. Each day's T starts its run once: a clock set back over T, or a second tick within the
// window, finds that T already started. A tick after T does not catch up a missed run. The
// periodic backup is looked at on a server station only, once a day at most: when it failed, the
// next day tries again.
class DailyScheduler
{
public:
    static constexpr int WindowSeconds = 2;

    void setSchedule(const DailySchedule& schedule);
    const DailySchedule& schedule() const { return m_schedule; }
    void setServer(bool server);

    // The runs that start at this tick, in the order they start. plan: the backup settings read
    // for this tick (null when not known).
    QList<ScheduledRun> tick(const QDateTime& now, const BackupPlan* plan = nullptr);
    // The approval reset follows the daily-run rule at its own time; read by the owner for each
    // tick (server station only).
    void setApprovalReset(const ApprovalResetPlan& plan);

    // The moment of set time T that the window of a tick at `now` holds; invalid when it holds
    // none. Around midnight the moment may be on the next day.
    static QDateTime occurrence(const QDateTime& now, const QTime& setTime);

private:
    static bool dailyDue(const QDateTime& now, bool on, const QTime& setTime, QDateTime& lastStarted);

    DailySchedule m_schedule;
    bool m_server = false;
    QDateTime m_sendStarted;
    QDateTime m_retrievalStarted;
    ApprovalResetPlan m_reset;
    QDateTime m_resetStarted;
    QDate m_backupTried;
};
