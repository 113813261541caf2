#include "ui/live/MonitorPage.h"

#include "operations/live/LiveAlarmReset.h"
#include "operations/live/LiveMonitor.h"
#include "operations/panels/PanelRoster.h"
#include "operations/station/Station.h"
#include "store/RightsCheck.h"
#include "ui/common/Caption.h"
#include "ui/live/PanelLiveGrid.h"
#include "ui/live/frmMonitorSetup.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"
#include "ui/records/PassageColumns.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

MonitorPage::MonitorPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster, int capacity,
                         QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_bridge(bridge)
    , m_roster(roster)
    , m_names(*services.db)
{
    setObjectName(u"tabMonitor"_s);
    m_model = new LivePassageModel(capacity, this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdMonitor"_s);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setVisible(false);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    PassageColumns::fitMoment(m_grid);
    // Follows the newest passage until the operator scrolls away from the bottom, and again once
    // they scroll back. The range grows only after the view lays out its new rows, so the view is
    // taken to the bottom when it does, not when the rows are added.
    QScrollBar* bar = m_grid->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_following = value >= bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_following)
            bar->setValue(maximum);
    });
    connect(m_grid, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.isValid())
            clearPanelAlarm(index.row());
    });

    m_panels = new PanelLiveGrid(roster, *services.clock, this);

    auto* clearAlarm = new QPushButton(this);
    clearAlarm->setObjectName(u"cmdClearFireAlarm"_s);
    setCaption(clearAlarm, u"Alarm ve Yangın Durumlarını İptal Et"_s);
    auto* setup = new QPushButton(this);
    setup->setObjectName(u"cmdMonitorSetup"_s);
    setCaption(setup, u"Canlı İzleme Ayarları"_s);
    connect(clearAlarm, &QPushButton::clicked, this, &MonitorPage::clearFireAlarm);
    connect(setup, &QPushButton::clicked, this, &MonitorPage::openMonitorSetup);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(clearAlarm);
    buttons->addWidget(setup);
    buttons->addStretch();
    auto* top = new QHBoxLayout;
    top->addWidget(m_panels, 1);
    top->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addWidget(m_grid, 3);
}

void MonitorPage::watch(LiveMonitor& monitor)
{
    m_monitor = &monitor;
    connect(&monitor, &LiveMonitor::passagesStored, this, &MonitorPage::addPassages);
    m_panels->watch(monitor);
}

void MonitorPage::addPassages(const QList<RecordRow>& rows)
{
    if (rows.isEmpty())
        return;
    m_model->append(m_names.resolve(rows));
    if (m_following) {
        const QModelIndex last = m_model->index(m_model->rowCount() - 1, 0);
        m_grid->setCurrentIndex(last);
        m_grid->scrollTo(last, QAbstractItemView::PositionAtBottom);
    }
}

void MonitorPage::clearFireAlarm()
{
    // On the window thread rather than through the panel worker, so that a long retrieval in
    // progress cannot hold up a fire alarm reset.
    LiveAlarmReset::run(*m_services.op, *m_services.session, m_services.station->network().udp);
}

bool MonitorPage::openMonitorSetup()
{
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    frmMonitorSetup form(*m_services.db, this);
    if (form.exec() != QDialog::Accepted)
        return false;
    if (m_monitor)
        m_monitor->reloadRules();
    Q_EMIT monitorRulesChanged();
    return true;
}

void MonitorPage::clearPanelAlarm(int row)
{
    if (row < 0 || row >= m_model->rowCount())
        return;
    const qint32 panelNumber = m_model->passage(row).record.panelId;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    const std::optional<PanelEntry> entry = m_roster.entryForPanel(panelNumber);
    if (!entry)
        return;
    const int position = entry->position;
    m_bridge.run([position](OperationContext& c) { LiveAlarmReset::clearPanel(c, position); });
}

void MonitorPage::retranslate()
{
    m_model->retranslate();
    m_panels->retranslate();
}
