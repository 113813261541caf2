#pragma once

#include "operations/records/RecordRow.h"

#include <QDateTime>
#include <QHash>
#include <QPointer>
#include <QTableWidget>

class Clock;
class LiveMonitor;
class PanelRoster;
struct LiveStatusChange;

// One row per roster panel on the monitoring page: whether its pushed link is up, when its last
// live passage arrived, and the message of its last status frame ("Yangın", "Dolu").
class PanelLiveGrid : public QTableWidget
{
    Q_OBJECT

public:
    enum Column
    {
        Panel,
        Name,
        Link,
        LastRecord,
        Note,
        Count
    };

    // clock: where "now" is read when records arrive without a monitor to ask.
    PanelLiveGrid(PanelRoster& roster, const Clock& clock, QWidget* parent = nullptr);

    // Follows a monitor's signals; what it knows already is shown at once.
    void watch(LiveMonitor& monitor);

    void notePassages(const QList<RecordRow>& rows);
    void noteStatus(const LiveStatusChange& change);
    void noteConnection(qint32 panelNumber, bool connected);
    // Records of the panel reached the station just now by fetching its memory (a gap filled):
    // the last record time moves on, the link state is left as it is.
    void noteRecordsFetched(qint32 panelNumber);

    // The row of a panel number, -1 when the roster does not list it.
    int rowOf(qint32 panelNumber) const;
    // The Turkish message shown for a panel (empty when none).
    QString noteOf(qint32 panelNumber) const;
    QDateTime lastRecordOf(qint32 panelNumber) const;

    void redraw();
    void retranslate();

private:
    struct State
    {
        bool known = false; // a frame or a closed link was seen
        bool connected = false;
        QDateTime lastRecord;
        QString note; // Turkish
    };

    void showRow(int row, qint32 panelNumber);
    QTableWidgetItem* cell(int row, int column);

    PanelRoster& m_roster;
    QPointer<LiveMonitor> m_monitor;
    const Clock& m_clock;
    QHash<qint32, State> m_states;
};
