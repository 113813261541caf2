#pragma once

#include "operations/panels/PanelEntry.h"

#include <QList>
#include <QTableWidget>

class PanelRoster;

// One of the main window's panel lists (FlexPanel, FlexPanelGate, FlexPanelVisitor): a row per
// roster entry in roster order, row i being roster position i + 1, with the serial as four hex
// digits (right-aligned), the panel number, the trimmed name, the IP address and the clock's offset
// from the station's in seconds as last read (empty until read). It follows the
// roster: reloads refill it, and the selected panel is its current row. Clicking a row selects
// that panel; a double click asks for the panel's details.
class PanelGrid : public QTableWidget
{
    Q_OBJECT

public:
    PanelGrid(const QString& name, PanelRoster& roster, QWidget* parent = nullptr);

    void fill();
    // Shows the column headers in the current language.
    void retranslate();
    // Roster position of the current row, 0 when the list is empty.
    int currentPosition() const;

Q_SIGNALS:
    // A row was double-clicked (roster position).
    void panelActivated(int position);

private:
    void showSelection(int position);

    PanelRoster& m_roster;
    bool m_filling = false;
};
