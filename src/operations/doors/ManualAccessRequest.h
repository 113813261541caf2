#pragma once

#include <QtGlobal>
#include <array>

// A passage granted by hand from the station at one door of the selected panel, for a person
// (userRecordNo, a Users row) or a visitor (visitNo, a Visitors row; its date must be today).
struct ManualAccessRequest
{
    int door = 1; // 1..4
    bool withRelay = false; // drive the door's master relay too
    std::array<bool, 4> relays{}; // panel master relays to drive with it
    qint64 userRecordNo = 0;
    qint64 visitNo = 0;
};
