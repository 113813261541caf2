#pragma once

#include "store/LookupTable.h"
#include "store/OperatorAccounts.h"
#include "store/OperatorSession.h"
#include "store/StartupSequence.h"

#include <QDateTime>
#include <QMainWindow>
#include <QPointer>
#include <functional>

class QAction;
class QLabel;
class QProgressBar;
class QTabWidget;
class QTimer;
class WindowOperator;
class frmLookupTable;

// The station's main window: title, menus, the clock, the status line and progress bar, and the
// tab pages where the panel work is shown. It holds the state the other windows share: the
// settings record, the open database and the operator's session.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMain(const StartupResult& start, QWidget* parent = nullptr);
    ~frmMain() override;

    StationSettings settings() const { return m_start.settings; }
    const DataFolder& folder() const { return m_start.folder; }
    Database& database() { return *m_start.database; }
    OperatorSession& session() { return m_session; }
    OperatorAccounts& accounts() { return m_accounts; }
    WindowOperator& windowOperator() { return *m_operator; }
    QTabWidget* tabMain() const { return m_tabs; }

    // Puts a language in force and keeps it in the settings file at once.
    void changeLanguage(int language);
    // Shows the login dialog (modal); true when administrator rights are in force afterwards.
    bool showLogin();
    // The administrator check of every guarded action: login when needed, refusal message.
    bool checkRights();
    // One tick of the clock: date and time shown, administrator rights aged by one second.
    void clockTick();
    // Where the clock reads the time (tests fix it).
    void setClock(std::function<QDateTime()> now);

    void openLookupTable(LookupTable::Kind kind);
    void openAccounts();

Q_SIGNALS:
    // After every tick of the clock, for what runs on it (the scheduler).
    void ticked();

private:
    void buildMenus();
    void buildStatusLine();
    void markLanguage(int language);
    void showTime();

    StartupResult m_start;
    OperatorAccounts m_accounts;
    OperatorSession m_session;
    WindowOperator* m_operator = nullptr;
    QTabWidget* m_tabs = nullptr;
    QTimer* m_clockTimer = nullptr;
    QLabel* m_date = nullptr;
    QLabel* m_clock = nullptr;
    QLabel* m_statusLine = nullptr;
    QLabel* m_operatorName = nullptr;
    QProgressBar* m_progressBar = nullptr;
    QList<QAction*> m_languageEntries;
    QList<QPointer<frmLookupTable>> m_lookupForms;
    std::function<QDateTime()> m_now;
};
