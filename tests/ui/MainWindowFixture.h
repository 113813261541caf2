#pragma once

#include "store/StartupSequence.h"
#include "support/TestDatabases.h"

#include <memory>

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
    // Made on first use, so a test can change the start first.
    frmMain& window();

private:
    TestDatabases m_databases;
    StartupResult m_start;
    std::unique_ptr<frmMain> m_window;
    bool m_ok = false;
    QString m_error;
};
