#pragma once

#include "protocol/GroupCalendarRecord.h"

#include <QString>

// One group calendar as the station keeps it: its name and the names of its three groups beside
// what the panels are sent.
struct GroupCalendarRow
{
    GroupCalendarRecord record;
    QString name;
    QString groupName1;
    QString groupName2;
    QString groupName3;
};
