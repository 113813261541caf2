#include "ui/main/MainPages.h"

#include "operations/live/StatusListener.h"
#include "operations/panels/PanelRoster.h"
#include "operations/schedule/ScheduledRunJobs.h"
#include "operations/station/Station.h"
#include "operations/users/UserTransfer.h"
#include "store/StationSettings.h"
#include "ui/calendars/ProgrammedSlotsPage.h"
#include "ui/calendars/frmDailyPermission.h"
#include "ui/common/Caption.h"
#include "ui/configuration/GroupsPage.h"
#include "ui/configuration/TimeGroupsPage.h"
#include "ui/doors/DoorsPage.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/frmMain.h"
#include "ui/panels/PanelSettingsLauncher.h"
#include "ui/panels/PanelsPage.h"
#include "ui/records/RecordPages.h"
#include "ui/users/SendingUsersOperator.h"
#include "ui/users/UserTransferBox.h"
#include "ui/users/UsersPage.h"
#include "ui/users/VisitorsPage.h"
#include "ui/users/frmSendingUsersAllPanels.h"

#include <QEvent>
#include <QTabWidget>

using namespace Qt::StringLiterals;

MainPages::MainPages(QTabWidget* tabs, const PageServices& services)
    : QObject(tabs)
    , m_services(services)
{
    Station& station = *services.station;
    m_roster = &station.roster();
    m_roster->setStationSettings(services.settings);
    m_roster->load(*services.db);
    if (m_roster->selectedPosition() == 0 && m_roster->count() > 0)
        m_roster->select(1);
    m_listener = &station.statusListener();
    m_bridge = new PanelWorkerBridge(services, tabs->window(), this);
    m_bridge->start();

    m_users = new UsersPage(services);
    m_visitors = new VisitorsPage(services, *m_roster);
    const auto selectedUser = [users = m_users] { return users->selectedRecordNo(); };
    const auto selectedVisit = [visitors = m_visitors] { return visitors->selectedVisitNo(); };
    m_panels = new PanelsPage(services, *m_bridge, *m_roster, *m_listener, selectedUser);
    m_doors = new DoorsPage(*m_bridge, *m_roster, *services.op, selectedUser, selectedVisit);

    tabs->addTab(m_panels, QString());
    setCaption(m_panels, u"Paneller"_s);
    tabs->addTab(m_users, QString());
    setCaption(m_users, u"Kullanıcılar"_s);
    tabs->addTab(m_visitors, QString());
    setCaption(m_visitors, u"Ziyaretçiler"_s);
    tabs->addTab(m_doors, QString());
    setCaption(m_doors, u"Kapılar"_s);
    // Hook: the record pages (monitoring, access records, offline record box) install themselves.
    m_records = RecordPages::install(tabs, services, *m_bridge, *m_roster, *m_panels->recordOption());
    TimeGroupsPage::install(tabs, services, *m_bridge, *m_roster);
    m_groups = GroupsPage::install(tabs, services, *m_bridge, *m_roster);
    m_programmedSlots = ProgrammedSlotsPage::install(tabs, services, *m_bridge, *m_roster);

    m_sending = new frmSendingUsersAllPanels(tabs->window());
    m_sendingOperator = std::make_unique<SendingUsersOperator>(m_sending);

    connect(m_panels->userTransfer(), &UserTransferBox::usersReceived, m_users, &UsersPage::reload);
    connect(m_users, &UsersPage::usersChanged, m_visitors, &VisitorsPage::reload);
    // What each panel holds against the database: after every panel operation and user edit.
    const auto refreshSendState = [this] { m_roster->refreshSendState(*m_services.db); };
    connect(m_users, &UsersPage::usersChanged, this, refreshSendState);
    connect(m_bridge, &PanelWorkerBridge::jobFinished, this, refreshSendState);
    connect(m_panels, &PanelsPage::panelOpened, this, &MainPages::panelOpened);
    m_panelSettings = new PanelSettingsLauncher(services, *m_bridge, *m_roster, tabs->window(), this);
    connect(m_panels, &PanelsPage::panelOpened, m_panelSettings, &PanelSettingsLauncher::openPosition);
    connect(m_panels, &PanelsPage::newPanelRequested, m_panelSettings, &PanelSettingsLauncher::openNew);
    connect(m_groups, &GroupsPage::dailyPermissionRequested, this, &MainPages::openDailyPermission);
    tabs->window()->installEventFilter(this);
}

MainPages::~MainPages()
{
    // The worker may still be talking to a panel through the pages' operators.
    m_bridge->stop();
}

frmDailyPermission* MainPages::openDailyPermission(int groupNo)
{
    return frmDailyPermission::open(m_services, *m_bridge, groupNo, m_programmedSlots->window());
}

MainPages* MainPages::install(QTabWidget* tabs, const PageServices& services)
{
    return new MainPages(tabs, services);
}

MainPages* MainPages::install(frmMain& window)
{
    return install(window.tabMain(), window.pageServices());
}

void MainPages::reloadRoster()
{
    m_roster->setStationSettings(m_services.settings);
    m_roster->load(*m_services.db);
}

bool MainPages::sendUsersToAllPanels(std::function<void()> finished)
{
    frmSendingUsersAllPanels* window = m_sending;
    return runInSendingWindow(
        u"Tüm Panellere Kullanıcılar Gönderiliyor ..."_s,
        [window](OperationContext& c) {
            ScheduledRunJobs::dailySend(c, [window](const Message& message) { window->setMessage(message); });
        },
        std::move(finished));
}

bool MainPages::retrieveFromAllPanels(bool eraseAfter, std::function<void()> finished)
{
    return runInSendingWindow(
        u"Tüm Panellerden Offline Kayıtlar Alınıyor ..."_s,
        [eraseAfter](OperationContext& c) { ScheduledRunJobs::dailyRetrieval(c, eraseAfter); }, std::move(finished));
}

bool MainPages::runInSendingWindow(const QString& caption, std::function<void(OperationContext&)> job,
                                   std::function<void()> finished)
{
    if (m_bridge->busy())
        return false;
    m_sending->clearCancel();
    m_sending->setProgress(0, 1);
    m_sending->setMessage(Message());
    setCaption(m_sending, caption);
    m_sending->show();
    frmSendingUsersAllPanels* window = m_sending;
    const bool started = m_bridge->run(
        std::move(job),
        [window, finished] {
            // The run has stopped: a cancel request ends with it.
            window->clearCancel();
            window->hide();
            if (finished)
                finished();
        },
        m_sendingOperator.get());
    if (!started)
        m_sending->hide();
    return started;
}

void MainPages::retranslate()
{
    m_panels->retranslate();
    m_users->retranslate();
    m_visitors->retranslate();
    m_doors->retranslate();
}

bool MainPages::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    return QObject::eventFilter(watched, event);
}
