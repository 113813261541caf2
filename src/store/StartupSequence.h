#pragma once

#include "store/DataFolder.h"
#include "store/Message.h"
#include "store/StartupOptions.h"
#include "store/StationSettings.h"

#include <QString>
#include <memory>

class Database;
class InstanceLock;
class StartupUi;

// Everything the main window needs once the station has started.
struct StartupResult
{
    bool ok = false;
    // The message that ended the start (already shown through the StartupUi).
    Message failure;
    StationSettings settings;
    DataFolder folder;
    // The open main database; null when the start failed.
    std::shared_ptr<Database> database;
    // Where the main database is: a file path or an address.
    QString databaseLocation;
    QString title;
    // Held for the whole run when the start took the single-instance lock.
    std::shared_ptr<InstanceLock> lock;
};

// The station's start, without windows: single instance, settings record (and the start-up
// dialog), language database, main database (created only for a server's own file), title,
// station-wide settings row, schema upgrade and, on a fresh database, the administrator
// password. Every failure is shown through the StartupUi and ends the start.
class StartupSequence
{
public:
    StartupSequence(StartupUi& ui, const StartupOptions& options = {});

    StartupResult run();

    static QString serverTitle();
    static QString clientTitle();
    // The language table the start uses; by default the one compiled into the program.
    void setLanguageTablePath(const QString& path) { m_languageTable = path; }

    // For forms that open another database (a backup): the message shown when it cannot be
    // opened and the main database is used instead.
    static Message fallbackToMainDatabaseMessage();

private:
    bool fail(StartupResult& result, const Message& message);
    bool ensureAdminPassword(Database& db, StartupResult& result);

    StartupUi& m_ui;
    StartupOptions m_options;
    QString m_languageTable;
};
