#pragma once

#include "reports/ReportDocument.h"

#include <QString>
#include <functional>

class QIODevice;
class ReportRowSource;

// Writes a report as comma separated UTF-8 text: a header row of translated captions, then one
// line per row; fields holding a comma, a quote or a line break are quoted, and a field that a
// spreadsheet would take for a formula (beginning with =, +, -, @) gets an apostrophe in front.
class CsvWriter
{
public:
    using Progress = std::function<bool(qint64)>;

    static bool write(QIODevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                      QString* error, const Progress& progress = {});

    // One field as it stands in a line.
    static QString field(const QString& value);
};
