#pragma once

#include "store/Database.h"

#include <QString>
#include <memory>

// The reports' own database connections, kept open from one report to the next, each thread its
// own: opening a connection to a database server costs more than a report's first screen. A
// connection is in one report's hands at a time and comes back when that report is closed.
class ReportConnections
{
public:
    // A connection to db's database for the calling thread: one kept from an earlier report when
    // it still answers, else a new one (read-only when db is: a backup is never written). Null with the reason on
    // failure.
    static std::unique_ptr<Database> take(const Database& db, QString* error = nullptr);
    // Keeps a connection handed out by take() for the next report on this thread.
    static void giveBack(std::unique_ptr<Database> connection);
    // Closes this thread's kept connections to one database (it is being given up or replaced).
    static void close(const QString& location);
    // Closes all of this thread's kept connections (the station closes); reports still open close
    // theirs when they end, until the next report starts.
    static void closeAll();
    // True for a database opened only to be read (a backup); its report connections are so too.
    static bool isReadOnly(const Database& db);
    // How many connections this thread keeps, idle.
    static int keptCount();
};
