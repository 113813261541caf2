#pragma once

#include "ui/main/PageServices.h"

#include <QObject>
#include <functional>
#include <memory>

struct OperationContext;
class DoorsPage;
class GroupsPage;
class LazyPage;
class PanelRoster;
class PanelSettingsLauncher;
class PanelWorkerBridge;
class PanelsPage;
class ProgrammedSlotsPage;
class frmDailyPermission;
class RecordPages;
class QTabWidget;
class SendingUsersOperator;
class StatusListener;
class UsersPage;
class VisitorsPage;
class frmMain;
class frmSendingUsersAllPanels;

// The main window's panel-operation pages over the station's roster, worker (through its bridge)
// and status listener. The main window calls install() once with its tab widget; the pages
// follow the roster and the language on their own. The worker starts with the pages and stops
// when they go, so no job is left talking to a page's operator.
class MainPages : public QObject
{
    Q_OBJECT

public:
    MainPages(QTabWidget* tabs, const PageServices& services);
    ~MainPages() override;

    // Adds the pages to the tab widget (they and this object belong to it from then on).
    static MainPages* install(QTabWidget* tabs, const PageServices& services);
    // The same with the main window's station and operator, the pages going into its tabMain.
    static MainPages* install(frmMain& window);

    PanelRoster& roster() const { return *m_roster; }
    PanelWorkerBridge& bridge() const { return *m_bridge; }
    StatusListener& statusListener() const { return *m_listener; }
    RecordPages* recordPages() const { return m_records; }
    PanelsPage* panelsPage() const { return m_panels; }
    // The pages after the first are made when first shown; asking for one here makes it.
    UsersPage* usersPage() const;
    VisitorsPage* visitorsPage() const;
    DoorsPage* doorsPage() const;
    // The access groups page (its daily permission button asks for the window of a group).
    GroupsPage* groupsPage() const;
    // The ring-day page (programmed door operations, with the way to the group calendars).
    ProgrammedSlotsPage* programmedSlotsPage() const;
    // Makes every page not made yet (tests that look for controls by name, the screenshot tour).
    void buildAllPages();
    // The daily approval list of an access group, for the groups page's request; null (and the
    // person told) for group 0.
    frmDailyPermission* openDailyPermission(int groupNo);
    frmSendingUsersAllPanels* sendingWindow() const { return m_sending; }
    // Opens the panel settings windows (double click on a panel, a new panel).
    PanelSettingsLauncher* panelSettings() const { return m_panelSettings; }

    // Reads the panel list again (after the panel settings were saved).
    void reloadRoster();
    // The daily send of every user to every panel, shown in frmSendingUsersAllPanels; false when
    // another panel operation is running. `finished` is called when the run has ended.
    bool sendUsersToAllPanels(std::function<void()> finished = {});
    // The daily retrieval of every panel's stored records, shown in the same window with its
    // cancel button; the panels are erased after their rows are stored when eraseAfter is set.
    bool retrieveFromAllPanels(bool eraseAfter, std::function<void()> finished = {});
    // Shows every page's grid headers and lists in the current language.
    void retranslate();

Q_SIGNALS:
    // A panel row was double-clicked and may be opened in its settings form (roster position).
    void panelOpened(int position);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeUsersPage();
    void refreshSendState();
    bool runInSendingWindow(const QString& caption, std::function<void(OperationContext&)> job,
                            std::function<void()> finished);

    PageServices m_services;
    PanelRoster* m_roster = nullptr;
    StatusListener* m_listener = nullptr;
    PanelWorkerBridge* m_bridge = nullptr;
    PanelsPage* m_panels = nullptr;
    RecordPages* m_records = nullptr;
    LazyPage* m_usersTab = nullptr;
    LazyPage* m_visitorsTab = nullptr;
    LazyPage* m_doorsTab = nullptr;
    LazyPage* m_groupsTab = nullptr;
    LazyPage* m_programmedSlotsTab = nullptr;
    frmSendingUsersAllPanels* m_sending = nullptr;
    PanelSettingsLauncher* m_panelSettings = nullptr;
    std::unique_ptr<SendingUsersOperator> m_sendingOperator;
};
