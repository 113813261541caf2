#include "reports/CsvWriter.h"

#include "reports/ReportRowSource.h"
#include "reports/ReportValueText.h"
#include "store/Translate.h"

#include <QIODevice>

using namespace Qt::StringLiterals;

namespace {

constexpr int kBatch = 2000;

bool put(QIODevice* device, const QByteArray& bytes, QString* error)
{
    if (device->write(bytes) == bytes.size())
        return true;
    if (error)
        *error = u"Writing the file failed: "_s + device->errorString();
    return false;
}

} // namespace

QString CsvWriter::field(const QString& value)
{
    // A spreadsheet runs a cell that begins with one of these as a formula; an apostrophe in front
    // makes it plain text (names and plates are typed by people and may begin with anything).
    static const QString formulaStarts = u"=+-@\t\r"_s;
    const QString text = !value.isEmpty() && formulaStarts.contains(value.front()) ? u'\'' + value : value;
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') && !text.contains(u'\r'))
        return text;
    QString quoted = text;
    quoted.replace(u"\""_s, u"\"\""_s);
    return u'"' + quoted + u'"';
}

bool CsvWriter::write(QIODevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                      QString* error, const Progress& progress)
{
    qint64 written = 0;
    if (rows)
        *rows = 0;
    if (!device || !device->isWritable()) {
        if (error)
            *error = u"The file is not open for writing."_s;
        return false;
    }
    const QList<int> out = document.outputColumns();
    QStringList header;
    for (int c : out)
        header << field(Translate(document.columns.value(c).caption));
    // The byte order mark lets spreadsheet programs read the Turkish letters as UTF-8.
    if (!put(device, "\xEF\xBB\xBF" + header.join(u',').toUtf8() + "\r\n", error))
        return false;
    // Each written column's description looked up once, not once per value.
    QList<ReportColumn> columns;
    for (int c : out)
        columns << document.columns.value(c);
    QString line;
    QByteArray chunk;
    while (!source.atEnd()) {
        const QList<QVariantList> batch = source.fetch(kBatch);
        chunk.clear();
        for (const QVariantList& row : batch) {
            line.clear();
            for (int i = 0; i < out.size(); ++i) {
                if (i)
                    line += u',';
                line += field(ReportValueText::text(row.value(out.at(i)), columns.at(i)));
            }
            line += u"\r\n"_s;
            chunk += line.toUtf8();
        }
        if (!put(device, chunk, error))
            return false;
        written += batch.size();
        if (rows)
            *rows = written;
        if (progress && !progress(written)) {
            if (error)
                *error = u"The export was stopped."_s;
            return false;
        }
    }
    if (!source.error().isEmpty()) {
        if (error)
            *error = source.error();
        return false;
    }
    return true;
}
