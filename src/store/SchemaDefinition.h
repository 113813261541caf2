#pragma once

#include "store/SchemaTable.h"

// Every table of the main database and of the language database, with columns, keys and indexes.
class SchemaDefinition
{
public:
    // Tables of the main database, in creation order.
    static const QList<SchemaTable>& mainTables();
    // A table of the main database by name; nullptr when unknown.
    static const SchemaTable* table(const QString& name);

    // Version stamped into a database after creation or upgrade.
    static int currentVersion();
    // Name of the small table that records the version.
    static QString versionTable();
};
