#pragma once

#include <QWidget>
#include <functional>

class CountersBox;
class Database;
class DoorStatusGrid;
class PanelDoorList;
class PanelGrid;
class PanelRoster;
class PanelTargetBox;
class PanelWorkerBridge;
class QVBoxLayout;
class StatusListener;
class UserTransferBox;
struct PageServices;

// The panels page of the main window: the panel list FlexPanel with the list of its doors and the
// door status grid under it, the status refresh and the panel search, the two target choices (opsPanelOption for users
// and counters, opsPanelOptionR for the record memory) and the user and counter buttons.
class PanelsPage : public QWidget
{
    Q_OBJECT

public:
    PanelsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster, StatusListener& listener,
               std::function<qint64()> selectedUser, QWidget* parent = nullptr);

    PanelGrid* panelGrid() const { return m_grid; }
    PanelDoorList* doorList() const { return m_doorList; }
    DoorStatusGrid* doorStatusGrid() const { return m_doorStatus; }
    PanelTargetBox* panelOption() const { return m_panelOption; }
    PanelTargetBox* recordOption() const { return m_recordOption; }
    UserTransferBox* userTransfer() const { return m_userTransfer; }
    CountersBox* counters() const { return m_counters; }

    void retranslate();
    // Adds a box under the others on the right (the daily transfers).
    void addSideBox(QWidget* box);

Q_SIGNALS:
    // The panel of this roster position was double-clicked and may be opened in detail.
    void panelOpened(int position);
    // The panel search replaced the panel list.
    void panelsReplaced();
    // A slot for a new panel is wanted (cmdNewPanel).
    void newPanelRequested();

private:
    void openPanel(int position);

    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    StatusListener& m_listener;
    PanelGrid* m_grid = nullptr;
    PanelDoorList* m_doorList = nullptr;
    DoorStatusGrid* m_doorStatus = nullptr;
    PanelTargetBox* m_panelOption = nullptr;
    PanelTargetBox* m_recordOption = nullptr;
    UserTransferBox* m_userTransfer = nullptr;
    CountersBox* m_counters = nullptr;
    QVBoxLayout* m_side = nullptr;
};
