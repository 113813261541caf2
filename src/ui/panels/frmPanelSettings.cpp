#include "ui/panels/frmPanelSettings.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelClockOperations.h"
#include "operations/panels/PanelModel.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSettingsOperations.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "operations/panels/RepeatBlockTime.h"
#include "operations/panels/UhfReaderOperations.h"
#include "operations/panels/ZoneCounterOperations.h"
#include "store/Clock.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/configuration/GlobalZonePicker.h"
#include "ui/configuration/frmPanelGroups.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"
#include "ui/panels/AddressEdit.h"
#include "ui/panels/ChoiceButtons.h"
#include "ui/panels/PanelDoorsBox.h"
#include "ui/panels/SelectOnFocus.h"

#include <QCheckBox>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString kTimeFormat = u"dd/MM/yyyy HH:mm:ss"_s;

QLabel* label(const QString& name, const QString& caption, QWidget* parent)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    setCaption(l, caption);
    return l;
}

QLineEdit* edit(const QString& name, QWidget* parent, int maxLength = 0, int width = 0)
{
    auto* e = new QLineEdit(parent);
    e->setObjectName(name);
    if (maxLength > 0)
        e->setMaxLength(maxLength);
    if (width > 0)
        e->setMaximumWidth(width);
    return e;
}

QCheckBox* check(const QString& name, const QString& caption, QWidget* parent)
{
    auto* c = new QCheckBox(parent);
    c->setObjectName(name);
    setCaption(c, caption);
    return c;
}

QGroupBox* box(const QString& name, const QString& caption, QWidget* parent)
{
    auto* b = new QGroupBox(parent);
    b->setObjectName(name);
    if (!caption.isEmpty())
        setCaption(b, caption);
    return b;
}

QList<PanelChoices::Choice> modelChoices()
{
    QList<PanelChoices::Choice> list;
    for (const PanelModel& model : PanelModel::all())
        list.append({ model.code, model.name });
    return list;
}

qint32 flag(const QCheckBox* box)
{
    return box->isChecked() ? 1 : 0;
}

} // namespace

frmPanelSettings::frmPanelSettings(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                                   qint32 order, QWidget* parent)
    : QDialog(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_roster(roster)
    , m_order(order)
{
    setObjectName(u"frmPanelSettings"_s);
    // Questions and messages of this window's operations come up over it; a login over the main window.
    m_operator = new WindowOperator(this, nullptr, nullptr, this);
    m_operator->setLoginHandler([op = m_services.op] {
        if (op)
            op->requestLogin();
    });

    auto* left = new QVBoxLayout;
    left->addWidget(buildIdentity());
    left->addWidget(buildNetwork());
    left->addWidget(buildMasterRelays());
    left->addWidget(buildClock());
    left->addStretch();
    m_doors = new PanelDoorsBox(this);
    auto* middle = new QVBoxLayout;
    middle->addWidget(m_doors);
    middle->addWidget(buildUhf());
    middle->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(buildGlobal());
    right->addWidget(buildCapacity());
    right->addWidget(buildRepeatBlock());
    right->addWidget(buildZones());
    right->addWidget(buildInputs());
    right->addWidget(buildStatusData());
    right->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(middle);
    columns->addLayout(right);

    m_useUdp = check(u"chkUseUDP"_s, u"UDP Protokolü İle Gönder"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_useUdp);
    buttons->addStretch();
    buttons->addWidget(button(u"cmdSaveSettings"_s, u"Ayarları Kaydet"_s, this, &frmPanelSettings::save));
    buttons->addWidget(button(u"cmdSend"_s, u"Ayarları Gönder"_s, this, &frmPanelSettings::sendSettings));
    buttons->addWidget(button(u"cmdClearPanel"_s, u"Paneli Kaldır"_s, this, &frmPanelSettings::removePanel));
    auto* close = new QPushButton(this);
    close->setObjectName(u"cmdClose"_s);
    setCaption(close, u"Kapat"_s);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addLayout(buttons);

    m_clockTimer = new QTimer(this);
    m_clockTimer->setObjectName(u"TClock"_s);
    m_clockTimer->setInterval(1000);
    connect(m_clockTimer, &QTimer::timeout, this, &frmPanelSettings::showPcClock);
    m_clockTimer->start();
    showPcClock();
    reload();
}

frmPanelSettings::~frmPanelSettings() = default;

QPushButton* frmPanelSettings::button(const QString& name, const QString& caption, QWidget* parent,
                                      void (frmPanelSettings::*slot)())
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    if (!caption.isEmpty())
        setCaption(b, caption);
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, slot);
    m_bridge.guard(b);
    return b;
}

QGroupBox* frmPanelSettings::buildIdentity()
{
    QGroupBox* b = box(u"frPanel"_s, u"Panel Bilgileri"_s, this);
    m_serial = edit(u"txtPanelMAC"_s, b, 4, 60);
    m_number = edit(u"txtOldID"_s, b, 3, 60);
    m_name = edit(u"txtPanelName"_s, b, 17);
    m_model = new ChoiceButtons(u"opsPanelModel"_s, modelChoices(), 3, b);
    m_controlMode = new ChoiceButtons(u"opsPanelWorkingMode"_s, PanelChoices::controlModes(), 1, b);
    m_ports = new ChoiceButtons(u"opsSingleUart"_s, PanelChoices::ports(), 1, b);
    auto* form = new QFormLayout(b);
    form->addRow(label(u"lblPanelMAC"_s, u"Panel Seri No:"_s, b), m_serial);
    form->addRow(label(u"lblOldID"_s, u"Panel No:"_s, b), m_number);
    form->addRow(label(u"lblPanelName"_s, u"Panel Adı:"_s, b), m_name);
    form->addRow(label(u"lblPanelModel"_s, u"Panel Modeli:"_s, b), m_model);
    form->addRow(label(u"lblPanelWorkingMode"_s, u"Kontrol Modu:"_s, b), m_controlMode);
    form->addRow(label(u"lblSingleUart"_s, u"RS485 Port:"_s, b), m_ports);
    connect(m_model, &ChoiceButtons::chosen, this, &frmPanelSettings::modelChosen);
    return b;
}

QGroupBox* frmPanelSettings::buildNetwork()
{
    QGroupBox* b = box(u"frNetwork"_s, u"Ağ Ayarları"_s, this);
    m_ip = new AddressEdit(u"txtLocalIPAddress"_s, b);
    m_subnet = new AddressEdit(u"txtLocalSubnetMask"_s, b);
    m_gateway = new AddressEdit(u"txtLocalGateway"_s, b);
    m_tcpPort = edit(u"txtLocalTCPPort"_s, b, 5, 70);
    m_tcpPort->setValidator(new QIntValidator(0, 65535, m_tcpPort));
    SelectOnFocus::install(m_tcpPort);
    m_remoteIp = new AddressEdit(u"txtRemoteIPAddress"_s, b);
    auto* form = new QFormLayout(b);
    form->addRow(label(u"lblLocalIPAddress"_s, u"Panel Lokal IP Adresi:"_s, b), m_ip);
    form->addRow(label(u"lblLocalSubnetMask"_s, u"Panel Alt Ağ Maskesi:"_s, b), m_subnet);
    form->addRow(label(u"lblLocalGateway"_s, u"Panel Varsayılan Ag Geçidi:"_s, b), m_gateway);
    form->addRow(label(u"lblLocalTCPPort"_s, u"Panel Lokal TCP Port:"_s, b), m_tcpPort);
    form->addRow(label(u"lblRemoteIPAddress"_s, u"Remote IP Adresi:"_s, b), m_remoteIp);
    return b;
}

QGroupBox* frmPanelSettings::buildMasterRelays()
{
    QGroupBox* b = box(u"frMasterRelays"_s, u"Panel Master Röle Süreleri (1-30sn Arası)"_s, this);
    auto* grid = new QGridLayout(b);
    for (int i = 0; i < 4; ++i) {
        const QString n = QString::number(i + 1);
        m_relayTimes[i] = edit(u"txtRelay"_s + n + u"Time"_s, b, 3, 50);
        auto* caption = new QLabel(b);
        caption->setObjectName(u"lblRelay"_s + n + u"Time"_s);
        setCaption(caption, u"Master Röle"_s, u" "_s + n + u':');
        grid->addWidget(caption, i / 2, (i % 2) * 2);
        grid->addWidget(m_relayTimes[i], i / 2, (i % 2) * 2 + 1);
    }
    return b;
}

QGroupBox* frmPanelSettings::buildGlobal()
{
    QGroupBox* b = box(u"frGlobal"_s, u"Genel Ayarlar"_s, this);
    m_globalAccessCount = check(u"chkGlobalAccessCountControl"_s, u"Global Giriş Sayısı Kontrol:"_s, b);
    m_globalInsideCount = check(u"chkGlobalMaxInCountControl"_s, u"Global İçerdeki Kişi/Araç Sayısı Kontrol:"_s, b);
    m_globalCapacity = check(u"chkGlobalCapacityControl"_s, u"Global Kapasite Kontrolü:"_s, b);
    m_temporaryGroups = check(u"chkTemporaryGroupActive"_s, u"Geçici Geçiş Grubu Atama Aktif:"_s, b);
    m_fire = check(u"chkFireActive"_s, u"Yangın Algılama Girişi Aktif:"_s, b);
    m_fireBroadcast = check(u"chkFireBroadcastActive"_s, u"Yangın Algılandığında Yayın Aktif:"_s, b);
    auto* layout = new QVBoxLayout(b);
    for (QCheckBox* c :
         { m_globalAccessCount, m_globalInsideCount, m_globalCapacity, m_temporaryGroups, m_fire, m_fireBroadcast })
        layout->addWidget(c);
    connect(m_temporaryGroups, &QCheckBox::clicked, this, [this](bool on) {
        if (on) {
            MessageBox::warning(this,
                                Message(u"Geçici grup özelliği aktifleştirilirse olay hafızası 40.000'den "
                                        u"30.000'e düşecektir."_s));
        }
    });
    return b;
}

QGroupBox* frmPanelSettings::buildCapacity()
{
    QGroupBox* b = box(u"frLocalCapacity"_s, u"Lokal Kapasite"_s, this);
    m_capacityActive = check(u"chkLocalCapacityActive"_s, u"Aktif"_s, b);
    m_capacity = edit(u"txtLocalCapacityValue"_s, b, 5, 70);
    m_capacityClear = check(u"chkLocalCapacityClear"_s, u"Gece Sil"_s, b);
    m_counter = edit(u"txtCounter"_s, b, 5, 70);
    m_counterShown = new QLabel(b);
    m_counterShown->setObjectName(u"lblCounter"_s);
    auto* grid = new QGridLayout(b);
    grid->addWidget(m_capacityActive, 0, 0);
    grid->addWidget(label(u"lblLocalCapacityValue"_s, u"Kapasite:"_s, b), 0, 1);
    grid->addWidget(m_capacity, 0, 2);
    grid->addWidget(m_capacityClear, 0, 3);
    grid->addWidget(m_counter, 1, 0);
    grid->addWidget(m_counterShown, 1, 1, 1, 3);
    grid->addWidget(button(u"cmdReadCounter"_s, u"Kapasite Sayacı Oku"_s, b, &frmPanelSettings::readCounter), 2, 0, 1,
                    2);
    grid->addWidget(button(u"cmdWriteCounter"_s, u"Kapasite Sayacı Değiştir"_s, b, &frmPanelSettings::writeCounter), 2,
                    2, 1, 2);
    grid->addWidget(button(u"cmdClearCounter"_s, u"Sayacı Sil"_s, b, &frmPanelSettings::clearCounter), 3, 0, 1, 2);
    return b;
}

QGroupBox* frmPanelSettings::buildRepeatBlock()
{
    QGroupBox* b = box(u"frSameTag"_s, u"Mükerrer Engelleme Ayarları"_s, this);
    m_blockMode = new ChoiceButtons(u"opsSameTagBlock"_s, PanelChoices::repeatBlockModes(), 3, b);
    m_blockType = new ChoiceButtons(u"opsSameTagBlockType"_s, PanelChoices::repeatBlockTypes(), 2, b);
    m_blockTime = edit(u"txtSameTag"_s, b, 3, 50);
    m_blockUnit = new ChoiceButtons(u"opsSameTagBlockMinSec"_s, PanelChoices::repeatBlockUnits(), 2, b);
    auto* time = new QHBoxLayout;
    time->addWidget(m_blockTime);
    time->addWidget(m_blockUnit);
    auto* layout = new QVBoxLayout(b);
    layout->addWidget(m_blockMode);
    layout->addWidget(m_blockType);
    layout->addWidget(label(u"lblSameTag"_s, u"Mükerrer Engelleme Süresi:"_s, b));
    layout->addLayout(time);
    return b;
}

QGroupBox* frmPanelSettings::buildZones()
{
    QGroupBox* b = box(u"frAPB"_s, u"Antipassback ve Global Bölgeler"_s, this);
    m_localApb = check(u"chkLocalAPB"_s, u"Lokal Antipassback (Lokal Kapı Bölgesi 1):"_s, b);
    m_localApb2 = check(u"chkLocalAPB2"_s, u"Lokal Antipassback (Lokal Kapı Bölgesi 2):"_s, b);
    m_globalApb = check(u"chkGlobalAPB"_s, u"Global Antipassack:"_s, b);
    auto* grid = new QGridLayout(b);
    grid->addWidget(m_localApb, 0, 0, 1, 4);
    grid->addWidget(m_localApb2, 1, 0, 1, 4);
    grid->addWidget(m_globalApb, 2, 0, 1, 4);
    const QStringList captions
        = { u"Global Bölge (Lokal Kapı Bölgesi 1):"_s, u"Global Bölge (Lokal Kapı Bölgesi 2):"_s };
    for (int i = 0; i < 2; ++i) {
        const QString n = QString::number(i);
        m_zoneNumbers[i] = edit(u"txtGroupNo"_s + n, b, 3, 50);
        m_zoneNames[i] = edit(u"txtGroupAdi"_s + n, b);
        m_zoneNames[i]->setReadOnly(true);
        auto* find = new QPushButton(u"..."_s, b);
        find->setObjectName(u"cmdFindPG"_s + n);
        find->setAutoDefault(false);
        find->setMaximumWidth(32);
        connect(find, &QPushButton::clicked, this, [this, i] { findZone(i); });
        connect(m_zoneNumbers[i], &QLineEdit::textChanged, this, [this, i] { showZoneName(i); });
        grid->addWidget(label(u"lblGroupNo"_s + n, captions.at(i), b), 3 + 2 * i, 0, 1, 4);
        grid->addWidget(m_zoneNumbers[i], 4 + 2 * i, 0);
        grid->addWidget(m_zoneNames[i], 4 + 2 * i, 1, 1, 2);
        grid->addWidget(find, 4 + 2 * i, 3);
    }
    auto* zones = new QPushButton(b);
    zones->setObjectName(u"cmdPanelGroups"_s);
    setCaption(zones, u"Global Kapı Bölgesi Ayarları"_s);
    zones->setAutoDefault(false);
    connect(zones, &QPushButton::clicked, this, &frmPanelSettings::openZones);
    grid->addWidget(zones, 7, 0, 1, 4);
    return b;
}

QGroupBox* frmPanelSettings::buildInputs()
{
    QGroupBox* b = box(u"frButtons"_s, u"Çıkış Butonu / Araç Dedektörü"_s, this);
    m_inputsActive = check(u"chkButtonActive"_s, u"Aktif"_s, b);
    m_inputType = new ChoiceButtons(u"opsReaderButtonLoop"_s, PanelChoices::inputTypes(), 2, b);
    m_detectorTime = edit(u"txtLoopTriggerTime"_s, b, 2, 40);
    auto* layout = new QGridLayout(b);
    layout->addWidget(m_inputsActive, 0, 0);
    layout->addWidget(m_inputType, 0, 1);
    layout->addWidget(label(u"lblLoopTriggerTime"_s, u"Dedektör Tetikleme Süresi:           (1-9 sn)"_s, b), 1, 0);
    layout->addWidget(m_detectorTime, 1, 1);
    return b;
}

QGroupBox* frmPanelSettings::buildStatusData()
{
    QGroupBox* b = box(u"frStatusData"_s, u"Durum Bilgisi Gönderimi"_s, this);
    m_statusUpdate = new ChoiceButtons(u"opsStatusDataUpdate"_s, PanelChoices::statusUpdates(), 2, b);
    m_statusUpdateType = new ChoiceButtons(u"opsStatusDataUpdateType"_s, PanelChoices::statusUpdateTypes(), 2, b);
    m_statusUpdateTime = new ChoiceButtons(u"opsStatusDataUpdateTime"_s, PanelChoices::statusUpdateTimes(), 1, b);
    auto* layout = new QVBoxLayout(b);
    layout->addWidget(m_statusUpdate);
    layout->addWidget(m_statusUpdateType);
    layout->addWidget(m_statusUpdateTime);
    return b;
}

QGroupBox* frmPanelSettings::buildUhf()
{
    auto* holder = new QGroupBox(this);
    holder->setObjectName(u"frUHF"_s);
    setCaption(holder, u"UHF Okuyucu (Seçilen Kapı)"_s);
    m_uhfPowerBox = box(u"frUHF1"_s, QString(), holder);
    m_uhfPower = edit(u"txtUHFPower"_s, m_uhfPowerBox, 2, 50);
    auto* power = new QHBoxLayout(m_uhfPowerBox);
    power->addWidget(label(u"lblUHFPower"_s, u"Çıkış Gücü:"_s, m_uhfPowerBox));
    power->addWidget(m_uhfPower);
    power->addWidget(label(u"lblUHFPowerRange"_s, u"15-30 dBm"_s, m_uhfPowerBox));
    power->addWidget(button(u"cmdGetUHFPower"_s, u"Oku"_s, m_uhfPowerBox, &frmPanelSettings::readUhfPower));
    power->addWidget(button(u"cmdSetUHFPower"_s, u"Yaz"_s, m_uhfPowerBox, &frmPanelSettings::setUhfPower));

    m_uhfBuzzerBox = box(u"frUHF2"_s, QString(), holder);
    m_buzzer = check(u"chkBuzzer"_s, u"Buzzer"_s, m_uhfBuzzerBox);
    m_led = check(u"chkLed"_s, u"Led"_s, m_uhfBuzzerBox);
    auto* buzzer = new QHBoxLayout(m_uhfBuzzerBox);
    buzzer->addWidget(m_buzzer);
    buzzer->addWidget(m_led);
    buzzer->addStretch();
    buzzer->addWidget(button(u"cmdGetBuzzerLed"_s, u"Oku"_s, m_uhfBuzzerBox, &frmPanelSettings::readBuzzerLed));
    buzzer->addWidget(button(u"cmdSetBuzzerLed"_s, u"Yaz"_s, m_uhfBuzzerBox, &frmPanelSettings::setBuzzerLed));

    auto* layout = new QVBoxLayout(holder);
    layout->addWidget(m_uhfPowerBox);
    layout->addWidget(m_uhfBuzzerBox);
    return holder;
}

QGroupBox* frmPanelSettings::buildClock()
{
    QGroupBox* b = box(u"frRTC"_s, u"Panel Saati"_s, this);
    m_pcClock = new QLabel(b);
    m_pcClock->setObjectName(u"lblPCRTC"_s);
    m_panelClock = new QLabel(b);
    m_panelClock->setObjectName(u"lblDeviceRTC"_s);
    auto* grid = new QGridLayout(b);
    grid->addWidget(label(u"lblPCRTCCaption"_s, u"PC Saati:"_s, b), 0, 0);
    grid->addWidget(m_pcClock, 0, 1);
    grid->addWidget(button(u"cmdSendRTC"_s, u"Saati Ayarla"_s, b, &frmPanelSettings::setClock), 0, 2);
    grid->addWidget(label(u"lblDeviceRTCCaption"_s, u"Panel Saati:"_s, b), 1, 0);
    grid->addWidget(m_panelClock, 1, 1);
    grid->addWidget(button(u"cmdReceiveRTC"_s, u"Saati Oku"_s, b, &frmPanelSettings::readClock), 1, 2);
    return b;
}

void frmPanelSettings::reload()
{
    QString error;
    m_zones = ZoneRepository(*m_services.db).list(&error);
    const std::optional<PanelSlot> slot = PanelSettingsRepository(*m_services.db).slot(m_order, &error);
    if (!slot) {
        qWarning().noquote() << "panel settings window:" << error;
        return;
    }
    m_slot = *slot;
    showInput(PanelSettingsInput::fromSlot(m_slot));
}

void frmPanelSettings::showInput(const PanelSettingsInput& input)
{
    const PanelSlot& slot = input.values;
    const PanelSettingsRecord& s = slot.settings;
    m_serial->setText(input.serial);
    m_number->setText(input.panelNumber);
    m_name->setText(s.name);
    m_model->setValue(s.model);
    m_controlMode->setValue(s.controlMode);
    m_ports->setValue(s.singleUart);
    // A slot without a panel has no address and no port, rather than 0.0.0.0 and 0.
    const bool noAddress = !slot.inUse() && s.ip == std::array<qint32, 4>{};
    if (noAddress)
        m_ip->clear();
    else
        m_ip->setOctets(s.ip);
    m_subnet->setOctets(s.subnet);
    m_gateway->setOctets(s.gateway);
    m_remoteIp->setOctets(s.remoteIp);
    m_tcpPort->setText(s.tcpPort > 0 ? QString::number(s.tcpPort) : QString());
    for (int i = 0; i < 4; ++i)
        m_relayTimes[i]->setText(input.masterRelayTimes[i]);
    m_globalAccessCount->setChecked(s.globalAccessCountControl != 0);
    m_globalInsideCount->setChecked(s.globalMaxInCountControl != 0);
    m_globalCapacity->setChecked(s.globalCapacityControl != 0);
    m_temporaryGroups->setChecked(s.temporaryGroupActive != 0);
    m_fire->setChecked(s.fireActive != 0);
    m_fireBroadcast->setChecked(s.fireBroadcastActive != 0);
    m_capacityActive->setChecked(s.localCapacity != 0);
    m_capacity->setText(input.capacity);
    m_capacityClear->setChecked(s.localCapacityClear != 0);
    m_blockMode->setValue(s.sameTagBlock);
    m_blockType->setValue(s.sameTagBlockType);
    m_blockTime->setText(input.blockTime);
    m_blockUnit->setValue(RepeatBlockTime::unpack(s.sameTagBlockMinSec).unit);
    m_localApb->setChecked(s.localApb != 0);
    m_localApb2->setChecked(s.localApb2 != 0);
    m_globalApb->setChecked(s.globalApb != 0);
    for (int i = 0; i < 2; ++i)
        m_zoneNumbers[i]->setText(input.globalZones[i]);
    m_inputsActive->setChecked(s.buttonActive != 0);
    m_inputType->setValue(s.buttonLoop);
    m_detectorTime->setText(input.detectorTime);
    m_statusUpdate->setValue(s.statusDataUpdate);
    m_statusUpdateType->setValue(s.statusDataUpdateType);
    m_statusUpdateTime->setValue(s.statusDataUpdateTime);
    m_doors->load(s.doors, slot.doorNames);
    applyModel();
    updateCaption();
}

PanelSettingsInput frmPanelSettings::input() const
{
    PanelSettingsInput in;
    in.values = m_slot;
    PanelSettingsRecord& s = in.values.settings;
    in.serial = m_serial->text();
    in.panelNumber = m_number->text();
    s.name = m_name->text();
    s.model = qMax(0, m_model->value());
    s.controlMode = qMax(0, m_controlMode->value());
    s.singleUart = qMax(0, m_ports->value());
    s.ip = m_ip->octets();
    s.subnet = m_subnet->octets();
    s.gateway = m_gateway->octets();
    s.remoteIp = m_remoteIp->octets();
    s.tcpPort = m_tcpPort->text().toInt();
    for (int i = 0; i < 4; ++i)
        in.masterRelayTimes[i] = m_relayTimes[i]->text();
    s.globalAccessCountControl = flag(m_globalAccessCount);
    s.globalMaxInCountControl = flag(m_globalInsideCount);
    s.globalCapacityControl = flag(m_globalCapacity);
    s.temporaryGroupActive = flag(m_temporaryGroups);
    s.fireActive = flag(m_fire);
    s.fireBroadcastActive = flag(m_fireBroadcast);
    s.localCapacity = flag(m_capacityActive);
    in.capacity = m_capacity->text();
    s.localCapacityClear = flag(m_capacityClear);
    s.sameTagBlock = qMax(0, m_blockMode->value());
    s.sameTagBlockType = qMax(0, m_blockType->value());
    in.blockTime = m_blockTime->text();
    RepeatBlockTime block = RepeatBlockTime::unpack(s.sameTagBlockMinSec);
    block.unit = qMax(0, m_blockUnit->value());
    s.sameTagBlockMinSec = block.packed();
    s.localApb = flag(m_localApb);
    s.localApb2 = flag(m_localApb2);
    s.globalApb = flag(m_globalApb);
    in.globalZones = { m_zoneNumbers[0]->text(), m_zoneNumbers[1]->text() };
    s.buttonActive = flag(m_inputsActive);
    s.buttonLoop = qMax(0, m_inputType->value());
    in.detectorTime = m_detectorTime->text();
    s.statusDataUpdate = qMax(0, m_statusUpdate->value());
    s.statusDataUpdateType = qMax(0, m_statusUpdateType->value());
    s.statusDataUpdateTime = qMax(0, m_statusUpdateTime->value());
    s.doors = m_doors->doors();
    in.values.doorNames = m_doors->names();
    return in;
}

void frmPanelSettings::applyModel()
{
    const PanelModel& model = PanelModel::byCode(m_model->value());
    m_doors->setModel(model);
    m_uhfPowerBox->setEnabled(model.uhfReaders);
    m_uhfBuzzerBox->setEnabled(model.uhfReaders);
    m_inputType->enableCodes(model.vehicleDetectors ? QList<qint32>{ 0, 1 } : QList<qint32>{ 0 });
    m_detectorTime->setEnabled(model.vehicleDetectors);
}

void frmPanelSettings::modelChosen(qint32 code)
{
    PanelSettingsInput in = input();
    const qint32 blockBefore = in.values.settings.sameTagBlock;
    PanelModel::byCode(code).applyTo(in.values.settings);
    // The block raised for the model starts at 1.
    if (in.values.settings.sameTagBlock != blockBefore)
        in.blockTime = QString::number(RepeatBlockTime::unpack(in.values.settings.sameTagBlockMinSec).time);
    const int door = m_doors->currentDoor();
    m_slot.settings.doors = in.values.settings.doors;
    showInput(in);
    m_doors->selectDoor(door);
}

void frmPanelSettings::updateCaption()
{
    const PanelSettingsRecord& s = m_slot.settings;
    QStringList ip;
    for (qint32 octet : s.ip)
        ip << QString::number(octet);
    const QString serial = QString::number(m_slot.serial, 16).toUpper().rightJustified(4, u'0');
    const QString number = m_slot.panelNumber > 0 ? QString::number(m_slot.panelNumber) : QString();
    setWindowTitle(Translate(u"Panel Ayarları"_s) + u" - "_s + s.name.trimmed() + u" - "_s + serial + u" - "_s
                   + ip.join(u'.') + u" | "_s + Translate(u"Panel No"_s) + u':' + number);
}

void frmPanelSettings::showZoneName(int index)
{
    bool ok = false;
    const int number = m_zoneNumbers[index]->text().trimmed().toInt(&ok);
    QString name;
    for (const ZoneRepository::Row& zone : std::as_const(m_zones)) {
        if (ok && zone.number == number)
            name = zone.name.trimmed();
    }
    m_zoneNames[index]->setText(name);
}

void frmPanelSettings::showPcClock()
{
    const QDateTime now = (m_services.clock ? *m_services.clock : Clock::system()).now();
    m_pcClock->setText(now.toString(kTimeFormat));
}

void frmPanelSettings::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_doors->retranslate();
        updateCaption();
    }
    QDialog::changeEvent(event);
}

void frmPanelSettings::run(std::function<WalkResult(OperationContext&)> operation,
                           std::function<void(const WalkResult&)> after)
{
    // The panel commands address the panel of this slot; a panel search may have taken it away.
    if (!PanelSettingsOperations::selectSlot(m_roster, m_order)) {
        MessageBox::warning(this, Message(u"Panel veritabanında bulunamadı."_s));
        return;
    }
    auto result = std::make_shared<WalkResult>();
    m_bridge.run([operation, result](OperationContext& context) { *result = operation(context); },
                 [self = QPointer<frmPanelSettings>(this), after, result] {
                     // The window may have been closed while the panel was busy.
                     if (self && after)
                         after(*result);
                 },
                 m_operator);
}

void frmPanelSettings::save()
{
    const PanelSettingsInput in = input();
    const qint32 order = m_order;
    run([in, order](OperationContext& c) { return PanelSettingsOperations(c).save(order, in); },
        [this](const WalkResult& r) {
            if (r.completed())
                reload();
        });
}

void frmPanelSettings::sendSettings()
{
    const PanelSettingsInput in = input();
    const qint32 order = m_order;
    const bool udp = m_useUdp->isChecked();
    // Whatever became of the send, the save before it may have stored the settings.
    run([in, order, udp](OperationContext& c) { return PanelSettingsOperations(c).send(order, in, udp); },
        [this](const WalkResult&) { reload(); });
}

void frmPanelSettings::removePanel()
{
    const qint32 order = m_order;
    run([order](OperationContext& c) { return PanelSettingsOperations(c).remove(order); },
        [this](const WalkResult& r) {
            if (r.completed())
                reload();
        });
}

void frmPanelSettings::readCounter()
{
    const qint32 zone = m_doors->localZone();
    auto count = std::make_shared<QString>();
    run([zone, count](OperationContext& c) { return ZoneCounterOperations(c).read(zone, count.get()); },
        [this, count](const WalkResult& r) {
            if (r.succeeded())
                m_counterShown->setText(*count);
        });
}

void frmPanelSettings::writeCounter()
{
    const qint32 zone = m_doors->localZone();
    const QString value = m_counter->text();
    const QString capacity = m_capacity->text();
    run([zone, value, capacity](OperationContext& c) { return ZoneCounterOperations(c).write(zone, value, capacity); },
        [this, value](const WalkResult& r) {
            if (r.succeeded())
                m_counterShown->setText(QString::number(value.trimmed().toInt()));
        });
}

void frmPanelSettings::clearCounter()
{
    const qint32 zone = m_doors->localZone();
    run([zone](OperationContext& c) { return ZoneCounterOperations(c).clear(zone); },
        [this](const WalkResult& r) {
            if (r.succeeded())
                m_counterShown->setText(u"0"_s);
        });
}

void frmPanelSettings::readClock()
{
    auto readings = std::make_shared<QList<PanelClockOperations::Reading>>();
    run([readings](OperationContext& c) { return PanelClockOperations(c).read(PanelTarget::Selected, readings.get()); },
        [this, readings](const WalkResult&) {
            if (!readings->isEmpty())
                m_panelClock->setText(readings->first().clock.text);
        });
}

void frmPanelSettings::setClock()
{
    run([](OperationContext& c) { return PanelClockOperations(c).set(PanelTarget::Selected); });
}

void frmPanelSettings::readUhfPower()
{
    const qint32 reader = m_doors->currentDoor();
    auto power = std::make_shared<qint32>(0);
    run([reader, power](OperationContext& c) { return UhfReaderOperations(c).readPower(reader, power.get()); },
        [this, power](const WalkResult& r) {
            if (r.succeeded())
                m_uhfPower->setText(QString::number(*power));
        });
}

void frmPanelSettings::setUhfPower()
{
    const qint32 reader = m_doors->currentDoor();
    const QString power = m_uhfPower->text();
    run([reader, power](OperationContext& c) { return UhfReaderOperations(c).setPower(reader, power); });
}

void frmPanelSettings::readBuzzerLed()
{
    const qint32 reader = m_doors->currentDoor();
    auto settings = std::make_shared<std::pair<bool, bool>>(false, false);
    run(
        [reader, settings](OperationContext& c) {
            return UhfReaderOperations(c).readBuzzerLed(reader, &settings->first, &settings->second);
        },
        [this, settings](const WalkResult& r) {
            if (!r.succeeded())
                return;
            m_buzzer->setChecked(settings->first);
            m_led->setChecked(settings->second);
        });
}

void frmPanelSettings::setBuzzerLed()
{
    const qint32 reader = m_doors->currentDoor();
    const bool buzzer = m_buzzer->isChecked();
    const bool led = m_led->isChecked();
    run([reader, buzzer, led](OperationContext& c) {
        return UhfReaderOperations(c).setBuzzerLed(reader, buzzer, led);
    });
}

void frmPanelSettings::findZone(int index)
{
    const int current = m_zoneNumbers[index]->text().trimmed().toInt();
    const std::optional<ZoneRepository::Row> zone = pickGlobalZone(this, *m_services.db, current);
    if (!zone)
        return;
    m_zoneNumbers[index]->setText(QString::number(zone->number));
    showZoneName(index);
}

void frmPanelSettings::openZones()
{
    if (!frmPanelGroups::open(this, *m_services.db, *m_services.session, *m_services.op))
        return; // nothing stored, the names shown stand
    QString error;
    m_zones = ZoneRepository(*m_services.db).list(&error);
    showZoneName(0);
    showZoneName(1);
}
