#include "support/StationWindow.h"

#include "ui/main/MainPages.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/WindowOperator.h"
#include "ui/main/frmMain.h"
#include "ui/records/RecordPages.h"

#include <QAbstractButton>
#include <QLabel>
#include <QProgressBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

StationWindow::StationWindow(bool listening)
{
    if (listening)
        m_sim.listenOnFreePort();
}

StationWindow::~StationWindow()
{
    close();
}

bool StationWindow::open()
{
    if (!m_sim.isReady()) {
        m_error = m_sim.error();
        return false;
    }
    m_window = std::make_unique<frmMain>(m_sim.station());
    // No login dialog: a guarded action without rights is refused at once, as when the person
    // gives the login up.
    m_window->windowOperator().setLoginHandler({});
    PageServices services = m_window->pageServices();
    services.searchTicks = 3;
    services.searchTickMs = 20;
    m_pages = MainPages::install(m_window->tabMain(), services);
    // Tests look for the controls of every page by name, shown or not.
    m_pages->buildAllPages();
    if (!m_sim.station().network().livePortFromPanels && !m_sim.station().live().isRunning()) {
        m_error = u"the live monitor is not listening"_s;
        return false;
    }
    m_window->resize(1400, 800);
    m_window->show();
    return true;
}

void StationWindow::close()
{
    m_pages = nullptr;
    m_window.reset();
}

QWidget& StationWindow::window() const
{
    return *m_window;
}

WindowOperator& StationWindow::op() const
{
    return m_window->windowOperator();
}

PanelWorkerBridge& StationWindow::bridge() const
{
    return m_pages->bridge();
}

MonitorPage& StationWindow::monitorPage() const
{
    return *m_pages->recordPages()->monitorPage();
}

AccessRecordsPage& StationWindow::accessPage() const
{
    return *m_pages->recordPages()->accessPage();
}

QProgressBar* StationWindow::progressBar() const
{
    return find<QProgressBar>(u"PrBar"_s);
}

QLabel* StationWindow::statusLine() const
{
    return find<QLabel>(u"lblStatus"_s);
}

QString StationWindow::pictureFolder()
{
    return m_sim.station().folder().pictureFolder();
}

bool StationWindow::click(const QString& name) const
{
    auto* button = find<QAbstractButton>(name);
    if (!button || !button->isEnabled())
        return false;
    button->click();
    return true;
}

bool StationWindow::waitIdle() const
{
    return QTest::qWaitFor([this] { return !m_pages->bridge().busy(); }, 60000);
}
