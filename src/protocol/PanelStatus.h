#pragma once

#include <QtGlobal>
#include <array>

// The state of one panel's doors, lines, zones, fire input and alarm, as a status frame tells it.
struct PanelStatus
{
    // Door state: 0 closed, 1 open, 2 unknown. Line state: 0 reader silent, 1 on line, 3 unknown.
    static constexpr int DoorUnknown = 2;
    static constexpr int LineUnknown = 3;

    quint16 serial = 0; // only the status answer carries it
    qint32 panelNumber = 0;
    std::array<qint32, 4> doorState{ DoorUnknown, DoorUnknown, DoorUnknown, DoorUnknown };
    std::array<qint32, 4> lineState{ LineUnknown, LineUnknown, LineUnknown, LineUnknown };
    bool zone1Full = false;
    bool zone2Full = false;
    bool fire = false;
    bool alarm = false;
};
