#pragma once

#include <QtGlobal>
#include <array>

// One access group as it travels to one panel: the panel's row of the group (doors and their time
// groups) and the group's own counters and switches.
struct AccessGroupRecord
{
    qint32 groupNo = 0;
    std::array<qint32, 4> doorTimeGroups{};
    std::array<bool, 4> doors{};
    qint32 accessCountLimit = 0;
    qint32 accessCountZone = 1;
    qint32 insideCountLimit = 0;
    qint32 insideCountZone = 1;
    bool dailyApprovalRequired = false;
    bool repeatedAccessBlockOff = false;
    bool localCapacityOff = false;
    bool clearInsideCountAtNight = false;
    bool antiPassbackOff = false;
};
