#include "PagesFixture.h"

#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PagesFixture::PagesFixture()
{
    m_window.setObjectName(u"frmMain"_s);
    m_tabs = new QTabWidget(&m_window);
    m_tabs->setObjectName(u"tabMain"_s);
    m_progress = new QProgressBar(&m_window);
    m_progress->setObjectName(u"PrBar"_s);
    m_progress->setVisible(false);
    m_status = new QLabel(&m_window);
    m_status->setObjectName(u"lblStatus"_s);
    auto* layout = new QVBoxLayout(&m_window);
    layout->addWidget(m_tabs);
    layout->addWidget(m_progress);
    layout->addWidget(m_status);
    m_op = new WindowOperator(&m_window, m_progress, m_status, &m_window);
}

PagesFixture::~PagesFixture()
{
    // The pages and the worker go before the database they use.
    delete m_tabs;
    m_tabs = nullptr;
}

bool PagesFixture::open()
{
    if (!m_sim.isReady())
        return false;
    PageServices services;
    services.db = &m_sim.db();
    services.session = &m_sim.session();
    services.settings = m_sim.settings();
    services.op = m_op;
    services.pictureFolder = m_pictures.path();
    services.udp = m_sim.context().udp;
    services.linkSettings.pacingMs = 0;
    services.linkSettings.reconnectPauseMs = 0;
    services.clock = [this] { return m_sim.now(); };
    services.searchTicks = 3;
    services.searchTickMs = 20;
    m_pages = MainPages::install(m_tabs, services);
    m_window.resize(1200, 800);
    m_window.show();
    return true;
}

bool PagesFixture::click(const QString& name) const
{
    return WindowDriver::clickEnabled(&m_window, name);
}

bool PagesFixture::waitIdle() const
{
    return QTest::qWaitFor([this] { return !m_pages->bridge().busy(); }, 60000);
}
