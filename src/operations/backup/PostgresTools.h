#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

class DatabaseLocation;

// The PostgreSQL client programs the backups use (pg_dump, pg_restore): where they are and how
// they reach the station's database. Arguments go to the program as a list, never through a
// shell, and the password travels in the environment, not on the command line.
class PostgresTools
{
public:
    // The program found on PATH, else in the newest /usr/lib/postgresql/N/bin; empty when missing.
    static QString program(const QString& name);
    // Host, port and user of the location (the database name is the caller's: pg_restore's
    // --dbname means where to restore).
    static QStringList connectionArguments(const DatabaseLocation& location);
    // The process environment with the password and a connect timeout added.
    static QProcessEnvironment environment(const DatabaseLocation& location);
};
