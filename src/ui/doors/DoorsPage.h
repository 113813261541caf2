#pragma once

#include "operations/doors/DoorRequest.h"
#include "operations/doors/ManualAccessRequest.h"

#include <QWidget>
#include <functional>
#include <memory>

class LabelStatusOperator;
class PanelGrid;
class PanelRoster;
class PanelTargetBox;
class PanelWorkerBridge;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QListWidget;
class WindowOperator;

// The door tab: the panel list FlexPanelGate, the door operation (trigger, hold open, hold
// closed) on the doors and master relays ticked in lstProcess, for the selected panel or all
// panels (opsPanelK); and the manual passage at one door (opsGate) of the selected panel for the
// selected user or visitor, with its progress in lblProcessManuel.
class DoorsPage : public QWidget
{
    Q_OBJECT

public:
    DoorsPage(PanelWorkerBridge& bridge, PanelRoster& roster, WindowOperator& op, std::function<qint64()> selectedUser,
              std::function<qint64()> selectedVisit, QWidget* parent = nullptr);
    ~DoorsPage() override;

    PanelGrid* panelGrid() const { return m_grid; }
    // What the controls ask for now.
    DoorRequest doorRequest() const;
    ManualAccessRequest manualRequest() const;

    void retranslate();

private:
    PanelWorkerBridge& m_bridge;
    PanelGrid* m_grid = nullptr;
    PanelTargetBox* m_target = nullptr;
    QButtonGroup* m_process = nullptr;
    QListWidget* m_list = nullptr;
    QCheckBox* m_masterRelay = nullptr;
    QCheckBox* m_reader = nullptr;
    QButtonGroup* m_gate = nullptr;
    QCheckBox* m_withRelay = nullptr;
    QButtonGroup* m_person = nullptr;
    QLabel* m_manualProgress = nullptr;
    std::unique_ptr<LabelStatusOperator> m_manualOperator;
    std::function<qint64()> m_selectedUser;
    std::function<qint64()> m_selectedVisit;
};
