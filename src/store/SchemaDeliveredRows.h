#pragma once

#include <QString>
#include <QStringList>

class Database;

// The rows a new main database starts with: code texts, user types, access modes, restriction
// types and the single settings row without an administrator password.
class SchemaDeliveredRows
{
public:
    // Fills every table that has delivered rows.
    static bool fill(Database& db, QString* error = nullptr);
    // Fills one table when it has delivered rows (nothing to do otherwise); returns rows added,
    // -1 on failure.
    static int fillTable(Database& db, const QString& table, QString* error = nullptr);
    // Tables that have delivered rows.
    static QStringList tables();
    // Adds the restriction types 10, 11 and 12 when type 10 is missing; returns the rows added
    // (0 when present), -1 on failure.
    static int addExtraRestrictionTypes(Database& db, QString* error = nullptr);
    // Makes sure the settings table has its single row; returns rows added, -1 on failure.
    static int ensureSettingsRow(Database& db, QString* error = nullptr);
};
