#include "ui/doors/DoorsPage.h"

#include "operations/doors/DoorOperations.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/LabelStatusOperator.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"
#include "ui/panels/PanelGrid.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
QRadioButton* option(QWidget* parent, QButtonGroup* group, int id)
{
    auto* button = new QRadioButton(parent);
    button->setObjectName(group->objectName() + QString::number(id));
    group->addButton(button, id);
    return button;
}
} // namespace

DoorsPage::DoorsPage(PanelWorkerBridge& bridge, PanelRoster& roster, WindowOperator& op,
                     std::function<qint64()> selectedUser, std::function<qint64()> selectedVisit, QWidget* parent)
    : QWidget(parent)
    , m_bridge(bridge)
    , m_selectedUser(std::move(selectedUser))
    , m_selectedVisit(std::move(selectedVisit))
{
    setObjectName(u"tabDoors"_s);
    m_grid = new PanelGrid(u"FlexPanelGate"_s, roster, this);
    m_target = new PanelTargetBox(u"opsPanelK"_s, this);

    auto* processBox = new QGroupBox(this);
    processBox->setObjectName(u"frDoorProcess"_s);
    setCaption(processBox, u"Kapı İşlemleri"_s);
    m_process = new QButtonGroup(this);
    m_process->setObjectName(u"opsDoorProcess"_s);
    QRadioButton* trigger = option(processBox, m_process, 0);
    setCaption(trigger, u"Tetikle"_s);
    QRadioButton* holdOpen = option(processBox, m_process, 1);
    setCaption(holdOpen, u"Açık Tut"_s);
    QRadioButton* holdClosed = option(processBox, m_process, 2);
    setCaption(holdClosed, u"Kapalı Tut"_s);

    m_list = new QListWidget(processBox);
    m_list->setObjectName(u"lstProcess"_s);
    for (int door = 1; door <= 4; ++door) {
        auto* item = new QListWidgetItem(m_list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    for (int relay = 1; relay <= 4; ++relay) {
        auto* item = new QListWidgetItem(m_list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    m_masterRelay = new QCheckBox(processBox);
    m_masterRelay->setObjectName(u"chkMasterRelay"_s);
    setCaption(m_masterRelay, u"Kapı Master Rölesi ile"_s);
    m_reader = new QCheckBox(processBox);
    m_reader->setObjectName(u"chkReader"_s);
    setCaption(m_reader, u"Okuyucuda Uyarı"_s);
    auto* processButton = new QPushButton(processBox);
    processButton->setObjectName(u"cmdDoorProcess"_s);
    setCaption(processButton, u"Kapı İşlemini Gerçekleştir"_s);
    bridge.guard(processButton);

    auto* processOptions = new QHBoxLayout;
    processOptions->addWidget(trigger);
    processOptions->addWidget(holdOpen);
    processOptions->addWidget(holdClosed);
    auto* processLayout = new QVBoxLayout(processBox);
    processLayout->addLayout(processOptions);
    processLayout->addWidget(m_list);
    processLayout->addWidget(m_masterRelay);
    processLayout->addWidget(m_reader);
    processLayout->addWidget(processButton);

    auto* manualBox = new QGroupBox(this);
    manualBox->setObjectName(u"frManualAccess"_s);
    setCaption(manualBox, u"Manuel Geçiş"_s);
    m_gate = new QButtonGroup(this);
    m_gate->setObjectName(u"opsGate"_s);
    auto* gates = new QHBoxLayout;
    for (int door = 0; door < 4; ++door) {
        QRadioButton* gate = option(manualBox, m_gate, door);
        setCaption(gate, u"Kapı"_s, u" "_s + QString::number(door + 1));
        gates->addWidget(gate);
    }
    m_gate->button(0)->setChecked(true);
    m_withRelay = new QCheckBox(manualBox);
    m_withRelay->setObjectName(u"chkWithRelay"_s);
    setCaption(m_withRelay, u"Röle ile"_s);
    m_person = new QButtonGroup(this);
    m_person->setObjectName(u"opsManualPerson"_s);
    QRadioButton* forUser = option(manualBox, m_person, 0);
    setCaption(forUser, u"Seçilen Kullanıcı"_s);
    QRadioButton* forVisitor = option(manualBox, m_person, 1);
    setCaption(forVisitor, u"Seçilen Ziyaretçi"_s);
    forUser->setChecked(true);
    auto* manualButton = new QPushButton(manualBox);
    manualButton->setObjectName(u"cmdManualAccess"_s);
    setCaption(manualButton, u"Manuel Geçiş Ver"_s);
    bridge.guard(manualButton);
    m_manualProgress = new QLabel(manualBox);
    m_manualProgress->setObjectName(u"lblProcessManuel"_s);
    m_manualOperator = std::make_unique<LabelStatusOperator>(op, m_manualProgress);

    auto* persons = new QHBoxLayout;
    persons->addWidget(forUser);
    persons->addWidget(forVisitor);
    auto* manualLayout = new QVBoxLayout(manualBox);
    manualLayout->addLayout(gates);
    manualLayout->addWidget(m_withRelay);
    manualLayout->addLayout(persons);
    manualLayout->addWidget(manualButton);
    manualLayout->addWidget(m_manualProgress);

    connect(processButton, &QPushButton::clicked, this, [this] {
        const DoorRequest request = doorRequest();
        const PanelTarget where = m_target->allPanels() ? PanelTarget::All : PanelTarget::Selected;
        m_bridge.run([=](OperationContext& c) { DoorOperations(c).doorProcess(where, request); });
    });
    connect(manualButton, &QPushButton::clicked, this, [this] {
        const ManualAccessRequest request = manualRequest();
        m_manualProgress->clear();
        m_bridge.run([=](OperationContext& c) { DoorOperations(c).manualAccess(request); }, {}, m_manualOperator.get());
    });

    auto* right = new QVBoxLayout;
    right->addWidget(m_target);
    right->addWidget(processBox);
    right->addWidget(manualBox);
    right->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_grid, 3);
    layout->addLayout(right, 2);
    retranslate();
}

DoorsPage::~DoorsPage() = default;

DoorRequest DoorsPage::doorRequest() const
{
    DoorRequest request;
    request.action = m_process->checkedId();
    for (int i = 0; i < 4; ++i) {
        request.doors[i] = m_list->item(i)->checkState() == Qt::Checked;
        request.relays[i] = m_list->item(4 + i)->checkState() == Qt::Checked;
    }
    request.masterRelay = m_masterRelay->isChecked();
    request.reader = m_reader->isChecked();
    return request;
}

ManualAccessRequest DoorsPage::manualRequest() const
{
    ManualAccessRequest request;
    request.door = m_gate->checkedId() + 1;
    request.withRelay = m_withRelay->isChecked();
    for (int i = 0; i < 4; ++i)
        request.relays[i] = m_list->item(4 + i)->checkState() == Qt::Checked;
    if (m_person->checkedId() == 1)
        request.visitNo = m_selectedVisit();
    else
        request.userRecordNo = m_selectedUser();
    return request;
}

void DoorsPage::retranslate()
{
    m_grid->retranslate();
    for (int i = 0; i < 4; ++i) {
        m_list->item(i)->setText(Translate(u"Kapı"_s) + u' ' + QString::number(i + 1));
        m_list->item(4 + i)->setText(Translate(u"Röle"_s) + u' ' + QString::number(i + 1));
    }
}
