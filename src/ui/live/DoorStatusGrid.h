#pragma once

#include <QTableWidget>

class PanelRoster;

// "BAĞLANTI ve KAPI DURUMLARI": for every panel of the roster one row with the state of its four
// doors, drawn from the roster's door status table. The text tells the door (closed, open,
// unknown), the colour the reader line (on line green, silent red, unknown grey).
class DoorStatusGrid : public QTableWidget
{
    Q_OBJECT

public:
    explicit DoorStatusGrid(PanelRoster& roster, QWidget* parent = nullptr);

    void redraw();
    void retranslate();

    // The Turkish text shown for a door state.
    static QString doorStateText(int doorState);
    static QColor connectionColour(int connectionState);
    // The colour of one door's cell: the line's colour when it is down or unknown, else one
    // colour per door state, so an open door stands out from a closed one at a glance.
    static QColor cellColour(int doorState, int connectionState);

private:
    PanelRoster& m_roster;
};
