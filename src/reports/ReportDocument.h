#pragma once

#include "reports/ReportColumn.h"

#include <QDateTime>
#include <QList>
#include <QString>

// What the printed page and the spreadsheet show beside the rows: the title, the columns chosen
// for output (positions in the source's rows) and the cells the title is merged over.
struct ReportDocument
{
    QString title; // printed title, translated already
    QString sheetTitle; // spreadsheet title, translated already
    QList<ReportColumn> columns; // every column of the source
    QList<int> chosen; // positions of the columns to write; empty = all
    QString titleRange = QStringLiteral("A1:F1");
    // The number of rows when known beforehand (page numbers "n / total"); -1 when not.
    qint64 expectedRows = -1;
    // When the report was made, by the station's clock: printed at the top of every page.
    QDateTime printedAt;

    QList<int> outputColumns() const;
};
