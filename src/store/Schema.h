#pragma once

#include "store/SchemaTable.h"

#include <QString>
#include <QStringList>

class Database;

// Creates and upgrades the station's databases from SchemaDefinition.
class Schema
{
public:
    struct UpgradeResult
    {
        bool ok = false; // false only when the upgrade could not run at all (no transaction)
        QStringList tablesCreated;
        QStringList columnsAdded; // "Table.Column"
        QStringList skipped; // statements that failed and were skipped, with their error
        int rowsAdded = 0; // delivered rows added to code tables
        int versionBefore = 0;
    };

    // Creates every table and index of the main database and fills the delivered rows, in one
    // transaction. For a new, empty database only (the server station decides when).
    static bool createMain(Database& db, QString* error = nullptr);
    // Adds whatever is missing from an existing main database: tables, columns with their
    // defaults, indexes, the three extra restriction types, the version stamp. Statements that
    // fail are skipped and listed; the start goes on.
    static UpgradeResult upgrade(Database& db);

    // True when the database holds the station's tables (used to tell a fresh file from a used one).
    static bool hasMainTables(const Database& db);
    // Version recorded in the database; 0 when none is recorded.
    static int storedVersion(const Database& db);

    // Statement texts, for tests and diagnostics.
    static QString createTableSql(const Database& db, const SchemaTable& table);
    static QString columnSql(const Database& db, const SchemaColumn& column);
    static QString addColumnSql(const Database& db, const QString& table, const SchemaColumn& column);
    static QString createIndexSql(const Database& db, const QString& table, const SchemaIndex& index);

private:
    static bool createTables(Database& db, const QList<SchemaTable>& tables, QString* error);
    static bool stampVersion(Database& db, QString* error);
};
