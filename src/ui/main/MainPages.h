#pragma once

#include "ui/main/PageServices.h"

#include <QObject>
#include <memory>

class DoorsPage;
class PanelRoster;
class PanelSettingsLauncher;
class PanelWorkerBridge;
class PanelsPage;
class QTabWidget;
class SendingUsersOperator;
class StatusListener;
class UsersPage;
class VisitorsPage;
class frmMain;
class frmSendingUsersAllPanels;

// The main window's panel-operation pages and what they share: the panel roster, the worker
// thread (through its bridge) and the status listener. The main window calls install() once with
// its tab widget; the pages follow the roster and the language on their own.
class MainPages : public QObject
{
    Q_OBJECT

public:
    MainPages(QTabWidget* tabs, const PageServices& services);
    ~MainPages() override;

    // Adds the pages to the tab widget (they and this object belong to it from then on).
    static MainPages* install(QTabWidget* tabs, const PageServices& services);
    // The same with what the main window holds: its database, session, settings, operator and
    // picture folder, the pages going into its tabMain.
    static MainPages* install(frmMain& window);

    PanelRoster& roster() const { return *m_roster; }
    PanelWorkerBridge& bridge() const { return *m_bridge; }
    StatusListener& statusListener() const { return *m_listener; }
    PanelsPage* panelsPage() const { return m_panels; }
    UsersPage* usersPage() const { return m_users; }
    VisitorsPage* visitorsPage() const { return m_visitors; }
    DoorsPage* doorsPage() const { return m_doors; }
    frmSendingUsersAllPanels* sendingWindow() const { return m_sending; }
    // Opens the panel settings windows (double click on a panel, a new panel).
    PanelSettingsLauncher* panelSettings() const { return m_panelSettings; }

    // Reads the panel list again (after the panel settings were saved).
    void reloadRoster();
    // The daily send of every user to every panel, shown in frmSendingUsersAllPanels; false when
    // another panel operation is running.
    bool sendUsersToAllPanels();
    // Shows every page's grid headers and lists in the current language.
    void retranslate();

Q_SIGNALS:
    // A panel row was double-clicked and may be opened in its settings form (roster position).
    void panelOpened(int position);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    PageServices m_services;
    PanelRoster* m_roster = nullptr;
    StatusListener* m_listener = nullptr;
    PanelWorkerBridge* m_bridge = nullptr;
    PanelsPage* m_panels = nullptr;
    UsersPage* m_users = nullptr;
    VisitorsPage* m_visitors = nullptr;
    DoorsPage* m_doors = nullptr;
    frmSendingUsersAllPanels* m_sending = nullptr;
    PanelSettingsLauncher* m_panelSettings = nullptr;
    std::unique_ptr<SendingUsersOperator> m_sendingOperator;
};
