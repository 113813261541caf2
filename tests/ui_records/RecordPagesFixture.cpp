#include "RecordPagesFixture.h"

#include "ui/common/PanelTargetBox.h"
#include "ui/live/MonitorPage.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"
#include "ui/records/AccessRecordsPage.h"
#include "ui/records/RecordRetrievalBox.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

RecordPagesFixture::RecordPagesFixture()
{
    m_window.setObjectName(u"frmMain"_s);
    m_progress = new QProgressBar(&m_window);
    m_progress->setObjectName(u"PrBar"_s);
    m_progress->setVisible(false);
    m_status = new QLabel(&m_window);
    m_status->setObjectName(u"lblStatus"_s);
    m_op = new WindowOperator(&m_window, m_progress, m_status, &m_window);
}

RecordPagesFixture::~RecordPagesFixture()
{
    // The worker and the monitor go before the database they use.
    if (m_bridge)
        m_bridge->stop();
    m_monitor.stop();
}

bool RecordPagesFixture::open()
{
    if (!m_sim.isReady()) {
        m_error = m_sim.error();
        return false;
    }
    LiveSettings live;
    live.listenAddress = QHostAddress(QHostAddress::LocalHost);
    live.tcpPort = 0;
    live.udpPort = 0;
    live.batchIntervalMs = 10;
    if (!m_monitor.start(m_sim.db(), live, &m_sim.roster(), &m_error))
        return false;

    PageServices services;
    services.db = &m_sim.db();
    services.session = &m_sim.session();
    services.settings = m_sim.settings();
    services.op = m_op;
    services.udp = m_sim.context().udp;
    services.linkSettings.pacingMs = 0;
    services.linkSettings.reconnectPauseMs = 0;
    services.clock = [this] { return m_sim.now(); };
    m_services = services;
    m_bridge = new PanelWorkerBridge(services, m_sim.roster(), &m_window, &m_window);
    if (!m_bridge->start(&m_error))
        return false;

    m_monitorPage = new MonitorPage(services, *m_bridge, m_sim.roster(), LivePassageModel::DefaultCapacity, &m_window);
    m_monitorPage->watch(m_monitor);
    m_accessPage = new AccessRecordsPage(services, &m_window);
    m_accessPage->watch(m_monitor);
    m_recordTarget = new PanelTargetBox(u"opsPanelOptionR"_s, &m_window);
    m_retrieval = new RecordRetrievalBox(*m_bridge, *m_recordTarget, services.db, &m_window);
    m_accessPage->follow(*m_retrieval);

    auto* side = new QVBoxLayout;
    side->addWidget(m_recordTarget);
    side->addWidget(m_retrieval);
    side->addStretch();
    auto* pages = new QHBoxLayout;
    pages->addWidget(m_monitorPage, 1);
    pages->addWidget(m_accessPage, 1);
    pages->addLayout(side);
    auto* layout = new QVBoxLayout(&m_window);
    layout->addLayout(pages);
    layout->addWidget(m_progress);
    layout->addWidget(m_status);
    m_window.resize(1400, 800);
    m_window.show();
    return true;
}

SimPanel* RecordPagesFixture::addPanel(int number)
{
    SimPanel* panel = m_sim.addPanel(number);
    if (panel)
        panel->setPushTarget(u"127.0.0.1"_s, m_monitor.tcpPort());
    return panel;
}

bool RecordPagesFixture::click(const QString& name) const
{
    auto* button = find<QAbstractButton>(name);
    if (!button || !button->isEnabled())
        return false;
    button->click();
    return true;
}

bool RecordPagesFixture::waitIdle() const
{
    return QTest::qWaitFor([this] { return !m_bridge->busy(); }, 60000);
}

int RecordPagesFixture::storedPassages()
{
    return m_sim.db().scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toInt();
}
