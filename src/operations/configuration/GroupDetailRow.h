#pragma once

#include <QString>
#include <array>

// What an access group may do on one panel (GroupsDetail): the doors it may pass, each door's
// time group and global zone. The panel's and doors' names come from the panel's settings and are
// only shown.
struct GroupDetailRow
{
    qint64 recordNo = 0;
    int groupNo = 0;
    QString groupName;
    int serial = 0;
    int panelNo = 0;
    QString panelName;
    std::array<bool, 4> doors{};
    std::array<QString, 4> doorNames;
    std::array<int, 4> doorTimeGroups{};
    std::array<int, 4> doorZones{ 1, 1, 1, 1 };
};
