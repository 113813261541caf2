#pragma once

#include <QTime>
#include <array>

// One weekly time slot that switches doors and relays (a row of ProgRelay2). The table keeps eight
// doors and eight relays; only the first four of each travel to a panel.
struct ProgrammedSlot
{
    qint32 weekday = 1; // 1 = Monday
    qint32 slot = 0;
    bool active = false;
    QTime start;
    QTime end;
    std::array<bool, 8> doors{};
    std::array<bool, 8> relays{};
};
