#pragma once

#include <QString>

// One access group as the station keeps it (GroupsMaster): its name, counting limits and rule
// switches. Values are kept as typed; they are fitted to the panels' ranges only when sent.
struct GroupMasterRow
{
    int number = 0;
    QString name;
    int accessCount = 0; // passages allowed, 0 = no limit
    int accessCountZone = 1; // global zone in which they are counted
    int insideCount = 0; // members inside at once, 0 = no limit
    int insideCountZone = 1; // global zone in which they are counted
    int countPeriod = 0; // daily or monthly counting
    bool dailyApprovalRequired = false;
    bool repeatedAccessBlockOff = false;
    bool localCapacityOff = false;
    bool clearInsideCountAtNight = false;
    bool antiPassbackOff = false;

    bool operator==(const GroupMasterRow&) const = default;
};
