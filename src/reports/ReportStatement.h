#pragma once

#include "reports/ReportColumn.h"
#include "reports/ReportKind.h"
#include "store/Message.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QVariant>

// A report's statement as built from a filter: the text with "?" placeholders and the values
// bound to them, the statement that counts its rows, and the columns its rows are shown in.
// When the filter cannot give any row (letters in a flat number, an end before the start) the
// statement is refused: `refusal` says why and there is nothing to run.
struct ReportStatement
{
    enum class Shape
    {
        Plain, // one result row is one report row
        Monthly // rows per person and day, folded into one report row per person
    };

    ReportKind kind = ReportKind::Access;
    // The whole statement, ordered as the report is shown.
    QString sql;
    QVariantList params;
    // Passage reports are read page by page from the newest record: `pageSql` is the statement
    // up to the end of its WHERE clause, each row ending in two extra values (date and record
    // number) that mark where the next page begins.
    bool paged = false;
    QString pageSql;
    QVariantList pageParams;
    QString countSql;
    QVariantList countParams;
    // Columns of the report rows (after folding for the monthly view).
    QList<ReportColumn> columns;
    Shape shape = Shape::Plain;
    // Name of the chosen global zone, written into ZoneName columns; empty without a zone.
    QString zoneName;
    // The month's first day for the monthly view.
    QDate monthStart;
    Message refusal;

    bool isRefused() const { return !refusal.isEmpty(); }
};
