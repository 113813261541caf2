#pragma once

#include "operations/configuration/ZoneRepository.h"
#include "operations/panels/PanelSettingsInput.h"
#include "operations/panels/WalkResult.h"
#include "ui/main/PageServices.h"

#include <QDialog>
#include <QList>
#include <array>
#include <functional>

class AddressEdit;
class ChoiceButtons;
class PanelDoorsBox;
class PanelRoster;
class PanelWorkerBridge;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class WindowOperator;
struct OperationContext;

// "Panel Ayarları": one panel slot of the list (named by its "Sira No") with every setting of
// the panel, and its direct panel operations (clock, zone counter, UHF readers). The window gathers
// what the person typed and chose; saving, sending, removing and every panel command go through
// the operations on the worker, which ask, check and tell.
class frmPanelSettings : public QDialog
{
    Q_OBJECT

public:
    frmPanelSettings(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster, qint32 order,
                     QWidget* parent = nullptr);
    ~frmPanelSettings() override;

    qint32 order() const { return m_order; }
    // What the controls hold now, as the save takes it.
    PanelSettingsInput input() const;
    // Shows the slot as stored again.
    void reload();

protected:
    void changeEvent(QEvent* event) override;

private:
    QGroupBox* buildIdentity();
    QGroupBox* buildNetwork();
    QGroupBox* buildMasterRelays();
    QGroupBox* buildGlobal();
    QGroupBox* buildCapacity();
    QGroupBox* buildRepeatBlock();
    QGroupBox* buildZones();
    QGroupBox* buildInputs();
    QGroupBox* buildStatusData();
    QGroupBox* buildUhf();
    QGroupBox* buildClock();
    QPushButton* button(const QString& name, const QString& caption, QWidget* parent, void (frmPanelSettings::*slot)());

    void showInput(const PanelSettingsInput& input);
    void applyModel();
    void modelChosen(qint32 code);
    void updateCaption();
    void showZoneName(int index);
    void showPcClock();

    // Runs a panel operation on the worker for this slot, then `after` on the window thread with
    // how it ended.
    void run(std::function<WalkResult(OperationContext&)> operation, std::function<void(const WalkResult&)> after = {});

    void save();
    void sendSettings();
    void removePanel();
    void readCounter();
    void writeCounter();
    void clearCounter();
    void readClock();
    void setClock();
    void readUhfPower();
    void setUhfPower();
    void readBuzzerLed();
    void setBuzzerLed();
    void findZone(int index);
    void openZones();

    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    qint32 m_order = 0;
    PanelSlot m_slot;
    QList<ZoneRepository::Row> m_zones;

    QLineEdit* m_serial = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_name = nullptr;
    ChoiceButtons* m_model = nullptr;
    ChoiceButtons* m_controlMode = nullptr;
    ChoiceButtons* m_ports = nullptr;
    AddressEdit* m_ip = nullptr;
    AddressEdit* m_subnet = nullptr;
    AddressEdit* m_gateway = nullptr;
    AddressEdit* m_remoteIp = nullptr;
    QLineEdit* m_tcpPort = nullptr;
    std::array<QLineEdit*, 4> m_relayTimes{};
    QCheckBox* m_globalAccessCount = nullptr;
    QCheckBox* m_globalInsideCount = nullptr;
    QCheckBox* m_globalCapacity = nullptr;
    QCheckBox* m_temporaryGroups = nullptr;
    QCheckBox* m_fire = nullptr;
    QCheckBox* m_fireBroadcast = nullptr;
    QCheckBox* m_capacityActive = nullptr;
    QLineEdit* m_capacity = nullptr;
    QCheckBox* m_capacityClear = nullptr;
    QLineEdit* m_counter = nullptr;
    QLabel* m_counterShown = nullptr;
    ChoiceButtons* m_blockMode = nullptr;
    ChoiceButtons* m_blockType = nullptr;
    QLineEdit* m_blockTime = nullptr;
    ChoiceButtons* m_blockUnit = nullptr;
    QCheckBox* m_localApb = nullptr;
    QCheckBox* m_localApb2 = nullptr;
    QCheckBox* m_globalApb = nullptr;
    std::array<QLineEdit*, 2> m_zoneNumbers{};
    std::array<QLineEdit*, 2> m_zoneNames{};
    QCheckBox* m_inputsActive = nullptr;
    ChoiceButtons* m_inputType = nullptr;
    QLineEdit* m_detectorTime = nullptr;
    ChoiceButtons* m_statusUpdate = nullptr;
    ChoiceButtons* m_statusUpdateType = nullptr;
    ChoiceButtons* m_statusUpdateTime = nullptr;
    PanelDoorsBox* m_doors = nullptr;
    QGroupBox* m_uhfPowerBox = nullptr;
    QGroupBox* m_uhfBuzzerBox = nullptr;
    QLineEdit* m_uhfPower = nullptr;
    QCheckBox* m_buzzer = nullptr;
    QCheckBox* m_led = nullptr;
    QLabel* m_pcClock = nullptr;
    QLabel* m_panelClock = nullptr;
    QCheckBox* m_useUdp = nullptr;
    QTimer* m_clockTimer = nullptr;
    WindowOperator* m_operator = nullptr;
};
