#include "reports/ReportExport.h"

#include "reports/CsvWriter.h"
#include "reports/ReportBuilder.h"
#include "reports/ReportCatalogue.h"
#include "reports/ReportPainter.h"
#include "reports/ReportRowSource.h"
#include "reports/XlsxWriter.h"
#include "store/Database.h"
#include "store/Translate.h"

#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

ReportDocument ReportExport::document(ReportKind kind, const ReportFilter& filter, const ReportStatement& statement,
                                      const QDateTime& printedAt)
{
    ReportDocument doc;
    doc.printedAt = printedAt;
    doc.title = ReportCatalogue::printTitle(kind, filter);
    doc.sheetTitle = ReportCatalogue::sheetTitle(kind, statement.zoneName);
    doc.columns = statement.columns;
    doc.titleRange = ReportCatalogue::titleRange(kind);
    for (const QString& key : filter.fields) {
        for (int i = 0; i < statement.columns.size(); ++i) {
            if (statement.columns.at(i).key == key && !doc.chosen.contains(i))
                doc.chosen << i;
        }
    }
    return doc;
}

ReportExport::Outcome ReportExport::write(Format format, ReportRowSource& source, const ReportDocument& document,
                                          QIODevice* device, const Progress& progress)
{
    Outcome out;
    switch (format) {
    case Format::Xlsx:
        out.ok = XlsxWriter::write(device, source, document, &out.rows, &out.error, progress);
        break;
    case Format::Csv:
        out.ok = CsvWriter::write(device, source, document, &out.rows, &out.error, progress);
        break;
    case Format::Pdf:
        out.ok = ReportPainter().writePdf(device, source, document, &out.rows, &out.error, progress);
        break;
    }
    return out;
}

ReportExport::Outcome ReportExport::write(Format format, ReportRowSource& source, const ReportDocument& document,
                                          const QString& path, const Progress& progress)
{
    Outcome out;
    // The file appears whole or not at all: a failed export leaves no half-written file behind.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        out.error = u"The file cannot be written: "_s + path + u" ("_s + file.errorString() + u')';
        return out;
    }
    out = write(format, source, document, &file, progress);
    if (!out.ok) {
        file.cancelWriting();
        return out;
    }
    if (!file.commit()) {
        out.ok = false;
        out.error = u"The file cannot be written: "_s + path + u" ("_s + file.errorString() + u')';
    }
    return out;
}

std::optional<ReportExport::Format> ReportExport::formatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == u"xlsx"_s)
        return Format::Xlsx;
    if (suffix == u"csv"_s)
        return Format::Csv;
    if (suffix == u"pdf"_s)
        return Format::Pdf;
    return std::nullopt;
}

ReportExport::Outcome ReportExport::run(const Database& db, ReportKind kind, const ReportFilter& filter, Format format,
                                        const QString& path, const QDateTime& printedAt, const Progress& progress)
{
    Outcome out;
    const ReportStatement statement = ReportBuilder::build(db, kind, filter);
    if (statement.isRefused()) {
        out.refusal = statement.refusal;
        out.error = Translate(statement.refusal);
        return out;
    }
    ReportDocument doc = document(kind, filter, statement, printedAt);
    if (format == Format::Pdf) {
        // Page numbers read "n / total".
        doc.expectedRows = ReportRowSource::count(db, statement);
    }
    ReportRowSource source;
    if (!source.open(db, statement, &out.error, ReportRowSource::Reading::Through))
        return out;
    return write(format, source, doc, path, progress);
}
