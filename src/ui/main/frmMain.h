#pragma once

#include "store/DataFolder.h"
#include "store/LookupTable.h"
#include "store/OperatorAccounts.h"
#include "store/OperatorSession.h"
#include "ui/main/PageServices.h"

#include <QDateTime>
#include <QMainWindow>
#include <QPointer>

class Clock;
class QAction;
class QLabel;
class QProgressBar;
class QTabWidget;
class QTimer;
class Station;
class WindowOperator;
class frmLookupTable;

// The station's main window: title, menus, the clock, the status line and progress bar, and the
// tab pages where the panel work is shown, over the station it is given (settings record, open
// database, operator's session, clock), which outlives it.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMain(Station& station, QWidget* parent = nullptr);
    ~frmMain() override;

    Station& station() { return m_station; }
    StationSettings settings() const;
    const DataFolder& folder() const;
    Database& database();
    OperatorSession& session();
    OperatorAccounts& accounts();
    WindowOperator& windowOperator() { return *m_operator; }
    QTabWidget* tabMain() const { return m_tabs; }

    // Puts a language in force and keeps it in the settings file at once.
    void changeLanguage(int language);
    // Shows the login dialog (modal); true when administrator rights are in force afterwards.
    bool showLogin();
    // The administrator check of every guarded action: login when needed, refusal message.
    bool checkRights();
    // One tick of ClockTimer: the clock's date and time shown, lapsed administrator rights withdrawn.
    void clockTick();
    const Clock& clock() const;
    // What the panel-operation pages are given: the station and this window's operator.
    PageServices pageServices();

    void openLookupTable(LookupTable::Kind kind);
    void openAccounts();
    // Dosya > Çıkış: closes the station, asking first while the live monitor is storing passages.
    void exitStation();

Q_SIGNALS:
    // After every tick of the clock, for what runs on it (the scheduler).
    void ticked();

private:
    void buildMenus();
    void buildStatusLine();
    void markLanguage(int language);
    void showTime();

    Station& m_station;
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
};
