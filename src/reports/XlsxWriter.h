#pragma once

#include "reports/ReportDocument.h"

#include <QString>
#include <functional>

class QIODevice;
class ReportRowSource;

// Writes a report as a real .xlsx workbook, row by row in constant memory: the title merged
// over its range, the translated captions of the chosen columns, date-times as numbers in a
// date-time format, and after the last row "Kayıt Sayısı:" with the count.
class XlsxWriter
{
public:
    using Progress = std::function<bool(qint64)>;

    // Writes to a file; false with a reason on failure.
    static bool write(const QString& path, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                      QString* error, const Progress& progress = {});
    // Writes to a device (the workbook is assembled in a temporary file first).
    static bool write(QIODevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                      QString* error, const Progress& progress = {});
};
