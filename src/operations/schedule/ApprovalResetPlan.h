#pragma once

#include <QTime>

// When the daily passage approvals fall back to "no": off by default; at a time of day, and
// whether the panels are told as well. Kept in the station-wide settings row, so that one server
// station applies it for the whole site.
struct ApprovalResetPlan
{
    bool on = false;
    QTime time;
    bool toPanels = false;

    bool operator==(const ApprovalResetPlan&) const = default;
};
