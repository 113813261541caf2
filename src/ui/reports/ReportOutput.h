#pragma once

#include "reports/ReportDocument.h"
#include "reports/ReportExport.h"
#include "reports/ReportStatement.h"

class QPrintPreviewDialog;
class QPrinter;
class QWidget;

// The report leaving the window: the print preview (and from there the printer), and the
// spreadsheet, PDF and CSV files. Every output writes the rows the window's grid holds, so the
// paper and the files show exactly what the person saw, whatever was stored since.
class ReportOutput
{
public:
    // Opens the print preview (not modal; it closes itself). Returns the dialog.
    static QPrintPreviewDialog* preview(QWidget* parent, const ReportStatement& statement,
                                        const QList<QVariantList>& shown, const ReportDocument& document);
    // Paints the rows on a printer (what the preview shows); the number of rows through rows.
    static bool print(QPrinter* printer, const ReportStatement& statement, const QList<QVariantList>& shown,
                      const ReportDocument& document, qint64* rows = nullptr, QString* error = nullptr);

    // Asks for a file name and writes the rows in that format; tells the person how it went.
    // False when nothing was written (cancelled or failed).
    static bool exportFile(QWidget* parent, ReportExport::Format format, const ReportStatement& statement,
                           const QList<QVariantList>& shown, const ReportDocument& document, const QString& folder);

    static QString fileFilter(ReportExport::Format format);
    static QString suffix(ReportExport::Format format);
};
