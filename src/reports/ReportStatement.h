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
    // Passage reports are read page by page from the newest record. A page is `pageSelect`,
    // then `pageFrom` (from FROM to the end of the WHERE clause) narrowed to the page.
    enum class Paging
    {
        Whole, // the whole statement is run once and its rows read as asked for
        ByRecord, // each page goes on after the last record read (its date and record number)
        BySecond, // pages end between two seconds, ordered by `pageOrder`: for reports that list
                  // each distinct row once, whose identical rows all share one second
        ByZoneAndPerson // "who is inside now" from the kept whereabouts: one row per zone and
                        // person, each page goes on after the last (zone, person) read
    };
    Paging paging = Paging::Whole;
    QString pageSelect;
    QString pageFrom;
    QVariantList pageParams;
    QString pageOrder;
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
