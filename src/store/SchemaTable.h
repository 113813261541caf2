#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The shape of one table as data, so that creation and upgrade work from the same list.

enum class ColumnType
{
    Counter, // row key numbered by the database
    Integer, // 32-bit whole number
    BigInt, // card numbers and passwords, which may pass 2^31
    Flag, // yes/no, stored as INTEGER 0/1 on both engines so one SQL text works everywhere
    Text, // free text; size > 0 limits it
    DateTime // stored date-time (time-of-day values on the base date 1899-12-30)
};

struct SchemaColumn
{
    QString name;
    ColumnType type = ColumnType::Integer;
    // SQL literal of the default ("0", "'1899-12-30 08:00:00'"); empty for none.
    QString defaultValue;
    bool notNull = false;
    int size = 0;
    // Named unique constraint (import staging tables); empty for none.
    QString uniqueConstraint;
};

struct SchemaIndex
{
    QString name;
    QStringList columns;
    bool unique = false;
};

struct SchemaTable
{
    QString name;
    QList<SchemaColumn> columns;
    // Primary key columns when there is no counter column; a counter is always the primary key.
    QStringList primaryKey;
    // Name of the primary key constraint (import staging tables); empty for the default.
    QString primaryKeyName;
    QList<SchemaIndex> indexes;

    const SchemaColumn* column(const QString& columnName) const;
    QStringList columnNames() const;
};
