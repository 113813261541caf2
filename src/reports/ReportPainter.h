#pragma once

#include "reports/ReportDocument.h"

#include <QFont>
#include <QString>
#include <functional>

class QIODevice;
class QPagedPaintDevice;
class QPainter;
class ReportRowSource;

// Lays a report out on pages: the title and the column captions at the top of every page, rows
// streamed from the source, the page number at the bottom. Works on any paged device: a printer
// (print preview, paper) or a PDF writer. Rows are drawn as they are read, never gathered.
class ReportPainter
{
public:
    using Progress = std::function<bool(qint64)>;

    ReportPainter();

    // Paints every page on the device; false with a reason on failure.
    bool paint(QPagedPaintDevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
               QString* error, const Progress& progress = {});

    // A PDF file or device, A4, landscape when the columns need it.
    bool writePdf(QIODevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                  QString* error, const Progress& progress = {});

    // The font every page uses; it must cover Turkish and Arabic.
    static QFont reportFont(qreal pointSize);
    // Whether a document's columns want a landscape page.
    static bool wantsLandscape(const ReportDocument& document);

private:
    qreal m_pointSize = 7.5;
};
