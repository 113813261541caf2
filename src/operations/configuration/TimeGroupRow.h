#pragma once

#include "protocol/TimeGroupRecord.h"

#include <QString>

// One time group as the station keeps it: its name beside what the panels are sent.
struct TimeGroupRow
{
    TimeGroupRecord record;
    QString name;

    bool operator==(const TimeGroupRow&) const = default;
};
