#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// Reads one column of one table out of a pg_dump custom-format file, row by row, through
// pg_restore writing the table's data as text: nothing is restored into any database, and the
// rows are never all held at once.
class DumpTableReader
{
public:
    // Called once per row with the column's text (a null QString for SQL NULL).
    using RowVisitor = std::function<void(const QString& value)>;

    // False with the reason when pg_restore is missing or fails, or when the dump holds no data
    // for the table, or the data ends before its end marker.
    static bool read(const QString& path, const QString& table, const QString& column, const RowVisitor& visit,
                     QString* error);

    // The column names of a "COPY schema.table (a, "B c") FROM stdin;" line; empty when the line
    // is not the start of that table's data.
    static QStringList copyColumns(const QString& line, const QString& table);
    // One field of a data line in COPY's text form, with its escapes resolved.
    static QString copyField(const QString& field);
};
