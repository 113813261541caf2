#include "ui/live/DoorStatusGrid.h"

#include "operations/panels/PanelRoster.h"
#include "store/Translate.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

DoorStatusGrid::DoorStatusGrid(PanelRoster& roster, QWidget* parent)
    : QTableWidget(parent)
    , m_roster(roster)
{
    setObjectName(u"grdDoorStatus"_s);
    setColumnCount(1 + DoorStatusTable::Doors);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
    verticalHeader()->setVisible(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    retranslate();
    connect(&m_roster, &PanelRoster::reloaded, this, &DoorStatusGrid::redraw);
    connect(&m_roster, &PanelRoster::doorStatusChanged, this, &DoorStatusGrid::redraw);
    redraw();
}

QString DoorStatusGrid::doorStateText(int doorState)
{
    switch (doorState) {
    case 0:
        return u"Kapalı"_s;
    case 1:
        return u"Açık"_s;
    default:
        return u"Bilinmiyor"_s;
    }
}

QColor DoorStatusGrid::connectionColour(int connectionState)
{
    switch (connectionState) {
    case 0:
        return QColor(0xE5, 0x73, 0x73);
    case 1:
        return QColor(0x81, 0xC7, 0x84);
    default:
        return QColor(0xBD, 0xBD, 0xBD);
    }
}

QColor DoorStatusGrid::cellColour(int doorState, int connectionState)
{
    if (connectionState != 1)
        return connectionColour(connectionState);
    switch (doorState) {
    case 0:
        return connectionColour(1); // closed on a working line: all is well
    case 1:
        return QColor(0xFF, 0xB7, 0x4D); // open
    default:
        return QColor(0x90, 0xCA, 0xF9); // a state the panel did not name
    }
}

void DoorStatusGrid::redraw()
{
    const QList<PanelEntry> entries = m_roster.entries();
    setRowCount(int(entries.size()));
    const DoorStatusTable& table = m_roster.doorStatus();
    for (int row = 0; row < entries.size(); ++row) {
        const PanelEntry& entry = entries.at(row);
        // A panel that has answered a status request since the list was built is on.
        bool answered = false;
        for (int door = 1; door <= DoorStatusTable::Doors; ++door)
            answered = answered || table.cell(entry.position, door).connectionState != PanelStatus::LineUnknown;
        auto* panel = new QTableWidgetItem(
            // Kept left to right in an Arabic window too.
            QChar(0x2066) + QString::number(entry.panelNumber) + (answered ? u" - On"_s : u" - Off"_s) + QChar(0x2069));
        panel->setData(Qt::UserRole, answered);
        setItem(row, 0, panel);
        for (int door = 1; door <= DoorStatusTable::Doors; ++door) {
            const DoorStatusTable::Cell cell = table.cell(entry.position, door);
            auto* item = new QTableWidgetItem(Translate(doorStateText(cell.doorState)));
            item->setData(Qt::UserRole, cell.doorState);
            item->setData(Qt::UserRole + 1, cell.connectionState);
            item->setBackground(cellColour(cell.doorState, cell.connectionState));
            item->setTextAlignment(Qt::AlignCenter);
            setItem(row, door, item);
        }
    }
}

void DoorStatusGrid::retranslate()
{
    QStringList headers{ Translate(u"Panel"_s) };
    for (int door = 1; door <= DoorStatusTable::Doors; ++door)
        headers << Translate(u"Kapı"_s) + u' ' + QString::number(door);
    setHorizontalHeaderLabels(headers);
    redraw();
}
