#pragma once

// What the scheduler starts: the daily send of every user to every panel, the daily retrieval
// of the panels' stored records, the server's periodic backup with the removal of old passage
// records, and the nightly reset of the daily approvals. Listed in the order they start when due
// on the same tick.
enum class ScheduledRun
{
    DailySend,
    DailyRetrieval,
    PeriodicBackup,
    // The daily passage approvals fall back to "no" (server station, when set).
    ApprovalReset
};
