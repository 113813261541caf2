#include "ui/panels/PanelsPage.h"

#include "operations/live/StatusRefresh.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSearch.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/doors/CountersBox.h"
#include "ui/live/DoorStatusGrid.h"
#include "ui/main/PageServices.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/panels/PanelDoorList.h"
#include "ui/panels/PanelGrid.h"
#include "ui/users/UserTransferBox.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

using namespace Qt::StringLiterals;

PanelsPage::PanelsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                       StatusListener& listener, std::function<qint64()> selectedUser, QWidget* parent)
    : QWidget(parent)
    , m_bridge(bridge)
    , m_roster(roster)
    , m_listener(listener)
{
    setObjectName(u"tabPanels"_s);

    m_grid = new PanelGrid(u"FlexPanel"_s, roster, this);
    connect(m_grid, &PanelGrid::panelActivated, this, &PanelsPage::openPanel);

    auto* doorBox = new QGroupBox(this);
    doorBox->setObjectName(u"frDoorList"_s);
    setCaption(doorBox, u"Kapılar"_s);
    m_doorList = new PanelDoorList(*services.db, roster, doorBox);
    (new QVBoxLayout(doorBox))->addWidget(m_doorList);

    auto* statusBox = new QGroupBox(this);
    statusBox->setObjectName(u"frDoorStatus"_s);
    setCaption(statusBox, u"BAĞLANTI ve KAPI DURUMLARI"_s);
    m_doorStatus = new DoorStatusGrid(roster, statusBox);
    auto* refresh = new QPushButton(statusBox);
    refresh->setObjectName(u"cmdRefreshStatus"_s);
    setCaption(refresh, u"Durumları Yenile"_s);
    auto* search = new QPushButton(statusBox);
    search->setObjectName(u"cmdSearchPanel"_s);
    setCaption(search, u"Panelleri Bul"_s);
    bridge.guard(search);
    auto* newPanel = new QPushButton(statusBox);
    newPanel->setObjectName(u"cmdNewPanel"_s);
    setCaption(newPanel, u"Yeni Panel Ekle"_s);
    bridge.guard(newPanel);
    connect(newPanel, &QPushButton::clicked, this, &PanelsPage::newPanelRequested);
    auto* statusButtons = new QHBoxLayout;
    statusButtons->addWidget(refresh);
    statusButtons->addWidget(search);
    statusButtons->addWidget(newPanel);
    statusButtons->addStretch();
    auto* statusLayout = new QVBoxLayout(statusBox);
    statusLayout->addWidget(m_doorStatus);
    statusLayout->addLayout(statusButtons);

    connect(refresh, &QPushButton::clicked, this, [this] { StatusRefresh::run(m_roster, m_listener); });
    const PanelSearch::Timing timing{ services.searchTicks, services.searchTickMs };
    connect(search, &QPushButton::clicked, this, [this, timing] {
        auto replaced = std::make_shared<bool>(false);
        m_bridge.run(
            [=](OperationContext& c) {
                QList<SearchAnswer> found;
                *replaced = PanelSearch(c, timing).run(&found).completed() && !found.isEmpty();
            },
            [this, replaced] {
                if (*replaced)
                    Q_EMIT panelsReplaced();
            });
    });

    m_panelOption = new PanelTargetBox(u"opsPanelOption"_s, this);
    setCaption(m_panelOption, u"Kullanıcı ve Sayaç İşlemleri"_s);
    m_recordOption = new PanelTargetBox(u"opsPanelOptionR"_s, this);
    setCaption(m_recordOption, u"Kayıt Hafızası İşlemleri"_s);
    m_userTransfer = new UserTransferBox(bridge, *m_panelOption, selectedUser, this);
    m_counters = new CountersBox(bridge, *m_panelOption, *m_recordOption, *services.db, selectedUser, this);

    auto* left = new QVBoxLayout;
    left->addWidget(m_grid, 3);
    left->addWidget(doorBox, 2);
    left->addWidget(statusBox, 2);
    auto* right = new QVBoxLayout;
    right->addWidget(m_panelOption);
    right->addWidget(m_userTransfer);
    right->addWidget(m_recordOption);
    right->addWidget(m_counters);
    right->addStretch();
    m_side = right;
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 3);
    layout->addLayout(right, 2);
}

void PanelsPage::addSideBox(QWidget* box)
{
    box->setParent(this);
    // Before the closing stretch.
    m_side->insertWidget(m_side->count() - 1, box);
}

void PanelsPage::openPanel(int position)
{
    const Message refusal = m_roster.open(position);
    if (!refusal.isEmpty()) {
        MessageBox::warning(this, refusal);
        return;
    }
    Q_EMIT panelOpened(position);
}

void PanelsPage::retranslate()
{
    m_grid->retranslate();
    m_doorList->retranslate();
    m_doorStatus->retranslate();
}
