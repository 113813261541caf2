#include "reports/XlsxWriter.h"

#include "reports/ReportCatalogue.h"
#include "reports/ReportRowSource.h"
#include "store/Translate.h"

#include <QFile>
#include <QIODevice>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kBatch = 2000;
// The last row a sheet can hold (0-based); further rows go on to a new sheet.
constexpr quint32 kLastSheetRow = LXW_ROW_MAX - 1;

QString sheetName(const QString& title, int number)
{
    // Sheet names are at most 31 characters and cannot hold []:*?/\ .
    static const QRegularExpression forbidden(u"[\\[\\]:*?/\\\\]"_s);
    QString name = title;
    name.remove(forbidden);
    name = name.trimmed();
    if (name.isEmpty())
        name = u"Rapor"_s;
    const QString suffix = number > 1 ? u" ("_s + QString::number(number) + u')' : QString();
    return name.left(31 - suffix.size()).trimmed() + suffix;
}

class Sheet
{
public:
    Sheet(lxw_workbook* book, const ReportDocument& document, const QList<int>& out)
        : m_book(book)
        , m_document(document)
        , m_out(out)
    {
        // Where each written column comes from and how it is shown, looked up once.
        for (int c : out) {
            const bool known = c >= 0 && c < document.columns.size();
            m_cells.append({ known ? c : -1, known ? document.columns.at(c).type : ReportColumn::Type::Text });
        }
        m_titleFormat = workbook_add_format(book);
        format_set_font_name(m_titleFormat, "Calibri");
        format_set_bold(m_titleFormat);
        format_set_font_size(m_titleFormat, 14);
        format_set_align(m_titleFormat, LXW_ALIGN_CENTER);
        m_headerFormat = workbook_add_format(book);
        format_set_font_name(m_headerFormat, "Calibri");
        format_set_bold(m_headerFormat);
        format_set_bottom(m_headerFormat, LXW_BORDER_THIN);
        m_textFormat = workbook_add_format(book);
        format_set_font_name(m_textFormat, "Calibri");
        m_dateFormat = workbook_add_format(book);
        format_set_font_name(m_dateFormat, "Calibri");
        format_set_num_format(m_dateFormat, "dd/mm/yyyy hh:mm:ss");
        m_dayFormat = workbook_add_format(book);
        format_set_font_name(m_dayFormat, "Calibri");
        format_set_num_format(m_dayFormat, "dd/mm/yyyy");
        m_durationFormat = workbook_add_format(book);
        format_set_font_name(m_durationFormat, "Calibri");
        format_set_num_format(m_durationFormat, "[hh]:mm");
    }

    bool start(QString* error)
    {
        ++m_sheets;
        const QByteArray name = sheetName(m_document.sheetTitle, m_sheets).toUtf8();
        m_sheet = workbook_add_worksheet(m_book, name.constData());
        if (!m_sheet)
            return fail(error, u"The spreadsheet could not take another sheet."_s);
        for (int i = 0; i < m_out.size(); ++i) {
            const ReportColumn& c = m_document.columns.value(m_out.at(i));
            worksheet_set_column(m_sheet, static_cast<lxw_col_t>(i), static_cast<lxw_col_t>(i), qMax(6, c.width) + 2.0,
                                 nullptr);
        }
        const QByteArray range = m_document.titleRange.toLatin1();
        const QByteArray title = m_document.sheetTitle.toUtf8();
        lxw_error e = worksheet_merge_range(m_sheet, lxw_name_to_row(range.constData()),
                                            lxw_name_to_col(range.constData()), lxw_name_to_row_2(range.constData()),
                                            lxw_name_to_col_2(range.constData()), title.constData(), m_titleFormat);
        if (e != LXW_NO_ERROR)
            return fail(error, QString::fromUtf8(lxw_strerror(e)));
        for (int i = 0; i < m_out.size(); ++i) {
            const QByteArray caption = Translate(m_document.columns.value(m_out.at(i)).caption).toUtf8();
            worksheet_write_string(m_sheet, 1, static_cast<lxw_col_t>(i), caption.constData(), m_headerFormat);
        }
        m_row = 2;
        return true;
    }

    bool add(const QVariantList& row, QString* error)
    {
        if (m_row >= kLastSheetRow && !start(error))
            return false;
        for (qsizetype i = 0; i < m_cells.size(); ++i) {
            const Cell& cell = m_cells.at(i);
            if (cell.source < 0 || cell.source >= row.size())
                continue;
            const QVariant& v = row.at(cell.source);
            if (v.isNull())
                continue;
            const auto col = static_cast<lxw_col_t>(i);
            lxw_error e = LXW_NO_ERROR;
            switch (cell.type) {
            case ReportColumn::Type::Integer:
                e = worksheet_write_number(m_sheet, m_row, col, static_cast<double>(v.toLongLong()), m_textFormat);
                break;
            case ReportColumn::Type::DateTime: {
                // One split of the value into its parts (each accessor would split it again).
                const QDateTime dt = v.toDateTime();
                int year = 0, month = 0, day = 0;
                dt.date().getDate(&year, &month, &day);
                const QTime t = dt.time();
                lxw_datetime when = { year, month, day, t.hour(), t.minute(), double(t.second()) };
                e = worksheet_write_datetime(m_sheet, m_row, col, &when, m_dateFormat);
                break;
            }
            case ReportColumn::Type::Date: {
                int year = 0, month = 0, day = 0;
                v.toDate().getDate(&year, &month, &day);
                lxw_datetime when = { year, month, day, 0, 0, 0.0 };
                e = worksheet_write_datetime(m_sheet, m_row, col, &when, m_dayFormat);
                break;
            }
            case ReportColumn::Type::Duration:
                // Spreadsheet time is a fraction of a day.
                e = worksheet_write_number(m_sheet, m_row, col, static_cast<double>(v.toLongLong()) / 1440.0,
                                           m_durationFormat);
                break;
            default: {
                const char* text = utf8(v);
                if (*text)
                    e = worksheet_write_string(m_sheet, m_row, col, text, m_textFormat);
                break;
            }
            }
            if (e != LXW_NO_ERROR)
                return fail(error, QString::fromUtf8(lxw_strerror(e)));
        }
        ++m_row;
        return true;
    }

    void finish(qint64 count)
    {
        if (m_row >= kLastSheetRow && !start(nullptr))
            return;
        const QByteArray text
            = (Translate(ReportCatalogue::recordCountText()) + u':' + QString::number(count)).toUtf8();
        worksheet_write_string(m_sheet, m_row, 0, text.constData(), m_headerFormat);
    }

private:
    struct Cell
    {
        int source; // index in the source row, -1 when the column is unknown
        ReportColumn::Type type;
    };

    // The value as NUL-terminated UTF-8 in a buffer reused from cell to cell.
    const char* utf8(const QVariant& v)
    {
        const QString text = v.toString();
        m_text.resize(m_encoder.requiredSpace(text.size()) + 1);
        char* end = m_encoder.appendToBuffer(m_text.data(), text);
        *end = '\0';
        return m_text.constData();
    }

    static bool fail(QString* error, const QString& text)
    {
        if (error)
            *error = u"The spreadsheet could not be written: "_s + text;
        return false;
    }

    lxw_workbook* m_book;
    const ReportDocument& m_document;
    const QList<int>& m_out;
    lxw_worksheet* m_sheet = nullptr;
    lxw_format* m_titleFormat = nullptr;
    lxw_format* m_headerFormat = nullptr;
    lxw_format* m_textFormat = nullptr;
    lxw_format* m_dateFormat = nullptr;
    lxw_format* m_dayFormat = nullptr;
    lxw_format* m_durationFormat = nullptr;
    lxw_row_t m_row = 0;
    int m_sheets = 0;
    QList<Cell> m_cells;
    QStringEncoder m_encoder{ QStringEncoder::Utf8, QStringEncoder::Flag::Stateless };
    QByteArray m_text;
};

bool writeWorkbook(const QString& file, const QString& tmpDir, ReportRowSource& source, const ReportDocument& document,
                   qint64* rows, QString* error, const XlsxWriter::Progress& progress)
{
    const QByteArray path = QFile::encodeName(file);
    const QByteArray tmp = QFile::encodeName(tmpDir);
    lxw_workbook_options options = {};
    // Rows go straight to temporary files as they are written: memory stays flat for any size.
    options.constant_memory = LXW_TRUE;
    options.tmpdir = const_cast<char*>(tmp.constData());
    options.use_zip64 = LXW_TRUE;
    lxw_workbook* book = workbook_new_opt(path.constData(), &options);
    if (!book) {
        if (error)
            *error = u"The spreadsheet could not be created: "_s + file;
        return false;
    }
    const QList<int> out = document.outputColumns();
    Sheet sheet(book, document, out);
    qint64 written = 0;
    bool ok = sheet.start(error);
    while (ok && !source.atEnd()) {
        const QList<QVariantList> batch = source.fetch(kBatch);
        for (const QVariantList& row : batch) {
            if (!sheet.add(row, error)) {
                ok = false;
                break;
            }
            ++written;
        }
        if (ok && progress && !progress(written)) {
            if (error)
                *error = u"The export was stopped."_s;
            ok = false;
        }
    }
    if (ok && !source.error().isEmpty()) {
        if (error)
            *error = source.error();
        ok = false;
    }
    if (ok)
        sheet.finish(written);
    const lxw_error closed = workbook_close(book);
    if (ok && closed != LXW_NO_ERROR) {
        if (error)
            *error = u"The spreadsheet could not be written: "_s + QString::fromUtf8(lxw_strerror(closed));
        ok = false;
    }
    if (rows)
        *rows = written;
    return ok;
}

} // namespace

bool XlsxWriter::write(QIODevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                       QString* error, const Progress& progress)
{
    if (rows)
        *rows = 0;
    if (!device || !device->isWritable()) {
        if (error)
            *error = u"The file is not open for writing."_s;
        return false;
    }
    // The library writes files only: assemble the workbook in a private folder, then copy it.
    QTemporaryDir dir;
    if (!dir.isValid()) {
        if (error)
            *error = u"No temporary folder for the spreadsheet: "_s + dir.errorString();
        return false;
    }
    const QString file = dir.filePath(u"report.xlsx"_s);
    if (!writeWorkbook(file, dir.path(), source, document, rows, error, progress))
        return false;
    QFile built(file);
    if (!built.open(QIODevice::ReadOnly)) {
        if (error)
            *error = u"The spreadsheet could not be read back: "_s + built.errorString();
        return false;
    }
    while (!built.atEnd()) {
        const QByteArray chunk = built.read(1 << 16);
        if (device->write(chunk) != chunk.size()) {
            if (error)
                *error = u"Writing the file failed: "_s + device->errorString();
            return false;
        }
    }
    return true;
}

bool XlsxWriter::write(const QString& path, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                       QString* error, const Progress& progress)
{
    // The file appears whole or not at all.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (rows)
            *rows = 0;
        if (error)
            *error = u"The file cannot be written: "_s + path + u" ("_s + file.errorString() + u')';
        return false;
    }
    if (!write(&file, source, document, rows, error, progress))
        return false;
    if (!file.commit()) {
        if (error)
            *error = u"The file cannot be written: "_s + path + u" ("_s + file.errorString() + u')';
        return false;
    }
    return true;
}
