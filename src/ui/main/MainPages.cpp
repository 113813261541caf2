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
#include "ui/main/LazyPage.h"
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

    // The first page is made now; the others when they are first shown or asked for.
    m_panels = new PanelsPage(services, *m_bridge, *m_roster, *m_listener,
                              [this] { return usersPage()->selectedRecordNo(); });
    tabs->addTab(m_panels, QString());
    setCaption(m_panels, u"Paneller"_s);
    m_usersTab = new LazyPage(
        tabs, u"Kullanıcılar"_s, [this] { return makeUsersPage(); }, this);
    m_visitorsTab = new LazyPage(
        tabs, u"Ziyaretçiler"_s, [this] { return new VisitorsPage(m_services, *m_roster); }, this);
    m_doorsTab = new LazyPage(
        tabs, u"Kapılar"_s,
        [this] {
            return new DoorsPage(
                *m_bridge, *m_roster, *m_services.op, [this] { return usersPage()->selectedRecordNo(); },
                [this] { return visitorsPage()->selectedVisitNo(); });
        },
        this);
    // Hook: the record pages (monitoring, access records, offline record box) install themselves.
    m_records = RecordPages::install(tabs, services, *m_bridge, *m_roster, *m_panels->recordOption());
    new LazyPage(
        tabs, u"Zaman Grupları"_s, [this] { return new TimeGroupsPage(m_services, *m_bridge, *m_roster); }, this);
    m_groupsTab = new LazyPage(
        tabs, u"Geçiş Grupları"_s,
        [this] {
            auto* groups = new GroupsPage(m_services, *m_bridge, *m_roster);
            connect(groups, &GroupsPage::dailyPermissionRequested, this, &MainPages::openDailyPermission);
            return groups;
        },
        this);
    m_programmedSlotsTab = new LazyPage(
        tabs, u"Programlı kapı işlemleri"_s,
        [this] { return new ProgrammedSlotsPage(m_services, *m_bridge, *m_roster); }, this);

    m_sending = new frmSendingUsersAllPanels(tabs->window());
    m_sendingOperator = std::make_unique<SendingUsersOperator>(m_sending);

    // What each panel holds against the database: after every panel operation and user edit.
    connect(m_bridge, &PanelWorkerBridge::jobFinished, this, &MainPages::refreshSendState);
    connect(m_panels, &PanelsPage::panelOpened, this, &MainPages::panelOpened);
    m_panelSettings = new PanelSettingsLauncher(services, *m_bridge, *m_roster, tabs->window(), this);
    connect(m_panels, &PanelsPage::panelOpened, m_panelSettings, &PanelSettingsLauncher::openPosition);
    connect(m_panels, &PanelsPage::newPanelRequested, m_panelSettings, &PanelSettingsLauncher::openNew);
    tabs->window()->installEventFilter(this);
}

MainPages::~MainPages()
{
    // The worker may still be talking to a panel through the pages' operators.
    m_bridge->stop();
}

frmDailyPermission* MainPages::openDailyPermission(int groupNo)
{
    return frmDailyPermission::open(m_services, *m_bridge, groupNo, m_panels->window());
}

QWidget* MainPages::makeUsersPage()
{
    auto* users = new UsersPage(m_services);
    connect(m_panels->userTransfer(), &UserTransferBox::usersReceived, users, &UsersPage::reload);
    connect(users, &UsersPage::usersChanged, this, [this] {
        // A visitors page not made yet reads the users when it is.
        if (m_visitorsTab->isBuilt())
            visitorsPage()->reload();
        refreshSendState();
    });
    return users;
}

void MainPages::refreshSendState()
{
    m_roster->refreshSendState(*m_services.db);
}

UsersPage* MainPages::usersPage() const
{
    return static_cast<UsersPage*>(m_usersTab->page());
}

VisitorsPage* MainPages::visitorsPage() const
{
    return static_cast<VisitorsPage*>(m_visitorsTab->page());
}

DoorsPage* MainPages::doorsPage() const
{
    return static_cast<DoorsPage*>(m_doorsTab->page());
}

GroupsPage* MainPages::groupsPage() const
{
    return static_cast<GroupsPage*>(m_groupsTab->page());
}

ProgrammedSlotsPage* MainPages::programmedSlotsPage() const
{
    return static_cast<ProgrammedSlotsPage*>(m_programmedSlotsTab->page());
}

void MainPages::buildAllPages()
{
    for (LazyPage* lazy : findChildren<LazyPage*>(Qt::FindDirectChildrenOnly))
        lazy->page();
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
    // Pages not made yet are made in the language then in force.
    m_panels->retranslate();
    if (m_usersTab->isBuilt())
        usersPage()->retranslate();
    if (m_visitorsTab->isBuilt())
        visitorsPage()->retranslate();
    if (m_doorsTab->isBuilt())
        doorsPage()->retranslate();
}

bool MainPages::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    return QObject::eventFilter(watched, event);
}
