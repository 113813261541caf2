#include "operations/live/DoorStatusTable.h"

DoorStatusTable::Cell DoorStatusTable::cell(int position, int door) const
{
    if (!inRange(position, door))
        return Cell();
    QMutexLocker lock(&m_mutex);
    return m_cells[position - 1][door - 1];
}

void DoorStatusTable::setCell(int position, int door, const Cell& cell)
{
    if (!inRange(position, door))
        return;
    QMutexLocker lock(&m_mutex);
    m_cells[position - 1][door - 1] = cell;
}

void DoorStatusTable::markUnknown(int position)
{
    for (int door = 1; door <= Doors; ++door)
        setCell(position, door, Cell());
}

void DoorStatusTable::apply(int position, const PanelStatus& status)
{
    for (int door = 1; door <= Doors; ++door)
        setCell(position, door, Cell{ status.doorState[door - 1], status.lineState[door - 1] });
}

bool DoorStatusTable::inRange(int position, int door)
{
    return position >= 1 && position <= Panels && door >= 1 && door <= Doors;
}
