#pragma once

#include "reports/ReportDocument.h"
#include "reports/ReportExport.h"
#include "reports/ReportStatement.h"

class Database;
class QPrintPreviewDialog;
class QPrinter;
class QWidget;

// The report leaving the window: the print preview (and from there the printer), and the
// spreadsheet, PDF and CSV files. Every output reads the report afresh from the database the
// grid was read from, so nothing the grid holds is needed.
class ReportOutput
{
public:
    // Opens the print preview (not modal; it closes itself). Returns the dialog.
    static QPrintPreviewDialog* preview(QWidget* parent, const Database& db, const ReportStatement& statement,
                                        const ReportDocument& document);
    // Paints the report on a printer (what the preview shows); the number of rows through rows.
    static bool print(QPrinter* printer, const Database& db, const ReportStatement& statement,
                      const ReportDocument& document, qint64* rows = nullptr, QString* error = nullptr);

    // Asks for a file name and writes the report in that format; tells the person how it went.
    // False when nothing was written (cancelled or failed).
    static bool exportFile(QWidget* parent, ReportExport::Format format, const Database& db,
                           const ReportStatement& statement, const ReportDocument& document, const QString& folder);

    static QString fileFilter(ReportExport::Format format);
    static QString suffix(ReportExport::Format format);
};
