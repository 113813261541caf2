#pragma once

#include "store/Clock.h"
#include "store/StartupSequence.h"
#include "support/TestDatabases.h"

#include <memory>

class Station;
class frmMain;

// A main window over a fresh SQLite database in a temporary data folder, as the start-up would
// hand it over: a set-up server station whose administrator password is 4321.
class MainWindowFixture
{
public:
    MainWindowFixture();
    ~MainWindowFixture();

    bool ok() const { return m_ok; }
    QString error() const { return m_error; }
    StartupResult& start() { return m_start; }
    Database& database() { return *m_start.database; }
    // The window's clock; it stands still until a test moves it.
    ManualClock& clock() { return m_clock; }
    // Made on first use (over a station of its own), so a test can change the start first.
    frmMain& window();

private:
    TestDatabases m_databases;
    ManualClock m_clock{ QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)) };
    StartupResult m_start;
    std::unique_ptr<Station> m_station;
    std::unique_ptr<frmMain> m_window;
    bool m_ok = false;
    QString m_error;
};
