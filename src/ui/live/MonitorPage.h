#pragma once

#include "operations/records/RecordRow.h"
#include "ui/live/LivePassageModel.h"
#include "ui/main/PageServices.h"
#include "ui/records/PassageNames.h"

#include <QPointer>
#include <QWidget>

class LiveMonitor;
class PanelLiveGrid;
class PanelRoster;
class PanelWorkerBridge;
class QTableView;

// The monitoring page: grdMonitor lists the passages as the live monitor stores them (appended,
// never read back from the database) and stays on the newest one while the operator has not
// scrolled away from the end; grdMonitorPanels shows each panel's link, last passage and alarm
// message. cmdClearFireAlarm cancels every panel's alarm and fire state, cmdMonitorSetup opens
// the live monitor settings, and a double click on a passage clears that panel's alarm.
class MonitorPage : public QWidget
{
    Q_OBJECT

public:
    MonitorPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                int capacity = LivePassageModel::DefaultCapacity, QWidget* parent = nullptr);

    // Follows a monitor's passages, status frames and links; its switches are read again when
    // the settings form stores them.
    void watch(LiveMonitor& monitor);

    void addPassages(const QList<RecordRow>& rows);
    // The confirmation, the administrator check, then the reset datagram to the broadcast address.
    void clearFireAlarm();
    // Opens frmMonitorSetup after the administrator check; true when it stored the switches.
    bool openMonitorSetup();
    // Clears the alarm of the panel whose passage is on that grid row (administrator only).
    void clearPanelAlarm(int row);

    LivePassageModel* model() const { return m_model; }
    QTableView* grid() const { return m_grid; }
    PanelLiveGrid* panels() const { return m_panels; }

    void retranslate();

Q_SIGNALS:
    // frmMonitorSetup stored new switches.
    void monitorRulesChanged();

private:
    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    PassageNames m_names;
    LivePassageModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    PanelLiveGrid* m_panels = nullptr;
    QPointer<LiveMonitor> m_monitor;
    // True while the grid shows its newest passage (see the constructor).
    bool m_following = true;
};
