#pragma once

#include "operations/live/DoorStatusTable.h"
#include "operations/panels/PanelEntry.h"
#include "store/Message.h"

#include <QList>
#include <QMutex>
#include <QObject>
#include <optional>

class Database;
struct StationSettings;

// The panels of PanelSettings in "Sira No" order (at most 64), the selected panel, which panels
// a client station may reach, and the door status table. Shared by the window and the worker;
// every method is safe from any thread and the signals are delivered to each receiver's thread.
class PanelRoster : public QObject
{
    Q_OBJECT

public:
    static constexpr int MaxPanels = 64;

    explicit PanelRoster(QObject* parent = nullptr);

    // Reads PanelSettings again; keeps the selection when that position still exists, else 1.
    bool load(const Database& db, QString* error = nullptr);
    // Works out again which panels are out of step with the database (after a send or an edit).
    void refreshSendState(const Database& db);
    // Replaces the entries (tests and the command line build rosters by hand).
    void setEntries(const QList<PanelEntry>& entries);
    QList<PanelEntry> entries() const;
    int count() const;
    // position 1..count(); nullopt outside.
    std::optional<PanelEntry> entry(int position) const;
    // The first entry with that panel number.
    std::optional<PanelEntry> entryForPanel(qint32 panelNumber) const;

    // Server or client, and for a client the panels it watches.
    void setStationSettings(const StationSettings& settings);
    bool isServer() const;
    // A server reaches every panel; a client only the panels it watches (by panel number).
    bool isReachable(int position) const;

    // 0 when nothing is selected (empty roster).
    int selectedPosition() const;
    std::optional<PanelEntry> selectedEntry() const;
    // Makes position the current panel; false (and nothing changes) when out of range.
    bool select(int position);
    // What a double click on a panel row does: on a client station an unreachable panel is
    // refused with "Bu panele Client üzerinden erişilemez!" (returned; nothing selected).
    // An empty message means the panel was selected.
    Message open(int position);

    DoorStatusTable& doorStatus() { return m_doorStatus; }
    const DoorStatusTable& doorStatus() const { return m_doorStatus; }

Q_SIGNALS:
    void reloaded();
    void selectionChanged(int position);
    // The door status table changed (rows marked unknown or an answer entered).
    void doorStatusChanged();

public:
    // Emits doorStatusChanged(); called by those who write the table.
    void notifyDoorStatusChanged();

private:
    static void markOutOfStep(const Database& db, QList<PanelEntry>& list);

    mutable QMutex m_mutex;
    QList<PanelEntry> m_entries;
    int m_selected = 0;
    bool m_server = true;
    QList<int> m_watched; // panel numbers a client watches
    DoorStatusTable m_doorStatus;
};
