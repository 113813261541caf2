#pragma once

#include "protocol/PanelStatus.h"

#include <QMutex>
#include <array>

// Door and connection state of the 4 doors of up to 64 panels, indexed by roster position.
// Written by the status refresh and the status listener, read by the door status grid; safe to
// use from any thread.
class DoorStatusTable
{
public:
    static constexpr int Panels = 64;
    static constexpr int Doors = 4;

    struct Cell
    {
        qint32 doorState = PanelStatus::DoorUnknown;
        qint32 connectionState = PanelStatus::LineUnknown;
        bool operator==(const Cell&) const = default;
    };

    // position 1..64, door 1..4; out-of-range reads give an unknown cell.
    Cell cell(int position, int door) const;
    void setCell(int position, int door, const Cell& cell);
    // Every door of the position becomes unknown (door state 2, connection state 3).
    void markUnknown(int position);
    // Copies the doors and lines of a status answer into the position's row.
    void apply(int position, const PanelStatus& status);

private:
    static bool inRange(int position, int door);

    mutable QMutex m_mutex;
    std::array<std::array<Cell, Doors>, Panels> m_cells{};
};
