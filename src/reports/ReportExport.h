#pragma once

#include "reports/ReportDocument.h"
#include "reports/ReportFilter.h"
#include "reports/ReportKind.h"
#include "reports/ReportStatement.h"
#include "store/Message.h"

#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

class Database;
class QIODevice;
class ReportRowSource;

// The ways a report leaves the station: spreadsheet, comma separated text and PDF. Each writes
// the rows of a freshly opened source, to a path or to a device; a failure comes back as a
// clear text and nothing throws.
class ReportExport
{
public:
    enum class Format
    {
        Xlsx,
        Csv,
        Pdf
    };
    // Called every few hundred rows with the number written; returning false stops the export.
    using Progress = std::function<bool(qint64 rowsWritten)>;

    struct Outcome
    {
        bool ok = false;
        qint64 rows = 0;
        QString error; // why it failed, for the person and the log
        Message refusal; // the filter gives no report (shown through Translate)
    };

    // The document (translated title, chosen fields, the moment printed on it) for a built statement.
    static ReportDocument document(ReportKind kind, const ReportFilter& filter, const ReportStatement& statement,
                                   const QDateTime& printedAt);

    static Outcome write(Format format, ReportRowSource& source, const ReportDocument& document, QIODevice* device,
                         const Progress& progress = {});
    static Outcome write(Format format, ReportRowSource& source, const ReportDocument& document, const QString& path,
                         const Progress& progress = {});

    // Builds, opens and writes in one go (the command line's road).
    // The format named by a file's extension (xlsx, csv, pdf).
    static std::optional<Format> formatOf(const QString& path);

    static Outcome run(const Database& db, ReportKind kind, const ReportFilter& filter, Format format,
                       const QString& path, const QDateTime& printedAt, const Progress& progress = {});
};
