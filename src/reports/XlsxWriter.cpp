#include "reports/XlsxWriter.h"

#include "reports/ReportCatalogue.h"
#include "reports/ReportRowSource.h"
#include "reports/ZipStreamWriter.h"
#include "store/Translate.h"

#include <QIODevice>
#include <QRegularExpression>
#include <QSaveFile>
#include <charconv>

using namespace Qt::StringLiterals;

namespace {

constexpr int kBatch = 2000;
// Rows a sheet can hold; further rows go on to a new sheet.
constexpr qint64 kSheetRows = 1048576;
// The sheet's text is handed to the compressor in pieces of about this size.
constexpr qsizetype kFlushAt = 1 << 17;
// Day 0 of spreadsheet dates, 1899-12-30, as a Julian day.
constexpr qint64 kDayZero = 2415019;

// Cell styles, in the order styles.xml lists them.
enum Style
{
    Plain = 0,
    Title = 1,
    Header = 2,
    DateTimeStyle = 3,
    DayStyle = 4,
    DurationStyle = 5
};

const char* const kStyles
    = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
      "<numFmts count=\"3\"><numFmt numFmtId=\"164\" formatCode=\"dd/mm/yyyy hh:mm:ss\"/>"
      "<numFmt numFmtId=\"165\" formatCode=\"dd/mm/yyyy\"/><numFmt numFmtId=\"166\" formatCode=\"[hh]:mm\"/></numFmts>"
      "<fonts count=\"3\"><font><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
      "<font><b/><sz val=\"14\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
      "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font></fonts>"
      "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
      "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
      "<borders count=\"2\"><border><left/><right/><top/><bottom/><diagonal/></border>"
      "<border><left/><right/><top/><bottom style=\"thin\"><color auto=\"1\"/></bottom><diagonal/></border></borders>"
      "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>"
      "<cellXfs count=\"6\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
      "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\" applyAlignment=\"1\">"
      "<alignment horizontal=\"center\"/></xf>"
      "<xf numFmtId=\"0\" fontId=\"2\" fillId=\"0\" borderId=\"1\" xfId=\"0\" applyFont=\"1\" applyBorder=\"1\"/>"
      "<xf numFmtId=\"164\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>"
      "<xf numFmtId=\"165\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>"
      "<xf numFmtId=\"166\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/></cellXfs>"
      "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles></styleSheet>";

const char* const kXmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const char* const kMainNs = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const char* const kRelNs = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

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

QByteArray columnLetters(int column)
{
    QByteArray letters;
    for (int n = column + 1; n > 0; n = (n - 1) / 26)
        letters.prepend(char('A' + (n - 1) % 26));
    return letters;
}

// Text as XML character data in UTF-8; characters XML cannot hold are left out.
void appendEscaped(QByteArray& out, QStringView text)
{
    const char16_t* p = text.utf16();
    const char16_t* end = p + text.size();
    for (; p < end; ++p) {
        const char16_t c = *p;
        if (c < 0x80) {
            switch (c) {
            case u'&':
                out.append("&amp;", 5);
                break;
            case u'<':
                out.append("&lt;", 4);
                break;
            case u'>':
                out.append("&gt;", 4);
                break;
            default:
                if (c >= 0x20 || c == u'\t' || c == u'\n' || c == u'\r')
                    out.append(char(c));
                break;
            }
        } else if (c < 0x800) {
            out.append(char(0xC0 | (c >> 6)));
            out.append(char(0x80 | (c & 0x3F)));
        } else if (QChar::isHighSurrogate(c) && p + 1 < end && QChar::isLowSurrogate(p[1])) {
            const char32_t u = QChar::surrogateToUcs4(c, p[1]);
            ++p;
            out.append(char(0xF0 | (u >> 18)));
            out.append(char(0x80 | ((u >> 12) & 0x3F)));
            out.append(char(0x80 | ((u >> 6) & 0x3F)));
            out.append(char(0x80 | (u & 0x3F)));
        } else if (!QChar::isSurrogate(c) && c != 0xFFFE && c != 0xFFFF) {
            out.append(char(0xE0 | (c >> 12)));
            out.append(char(0x80 | ((c >> 6) & 0x3F)));
            out.append(char(0x80 | (c & 0x3F)));
        }
    }
}

template <typename Number> void appendNumber(QByteArray& out, Number value)
{
    char digits[32];
    const auto r = std::to_chars(digits, digits + sizeof digits, value);
    out.append(digits, r.ptr - digits);
}

// The workbook's sheets, written one after the other as rows come.
class Book
{
public:
    Book(ZipStreamWriter& zip, const ReportDocument& document, const QList<int>& out)
        : m_zip(zip)
        , m_document(document)
    {
        for (int i = 0; i < out.size(); ++i) {
            const int c = out.at(i);
            const bool known = c >= 0 && c < document.columns.size();
            m_cells.append(
                { known ? c : -1, known ? document.columns.at(c).type : ReportColumn::Type::Text, columnLetters(i) });
        }
        m_buffer.reserve(kFlushAt + 4096);
    }

    bool startSheet()
    {
        if (m_sheets > 0 && !endSheet())
            return false;
        ++m_sheets;
        m_names << sheetName(m_document.sheetTitle, m_sheets);
        if (!m_zip.begin(u"xl/worksheets/sheet%1.xml"_s.arg(m_sheets)))
            return false;
        m_buffer.append(kXmlHead);
        m_buffer.append("<worksheet xmlns=\"").append(kMainNs).append("\" xmlns:r=\"").append(kRelNs).append("\">");
        m_buffer.append("<cols>");
        for (int i = 0; i < m_cells.size(); ++i) {
            const ReportColumn c
                = m_cells.at(i).source >= 0 ? m_document.columns.at(m_cells.at(i).source) : ReportColumn();
            m_buffer.append("<col min=\"");
            appendNumber(m_buffer, i + 1);
            m_buffer.append("\" max=\"");
            appendNumber(m_buffer, i + 1);
            m_buffer.append("\" width=\"");
            appendNumber(m_buffer, qMax(6, c.width) + 2);
            m_buffer.append("\" customWidth=\"1\"/>");
        }
        m_buffer.append("</cols><sheetData>");
        m_row = 0;
        // The title over its merged range, then the translated captions.
        const int titleCells = qMax(1, titleWidth());
        beginRow();
        for (int i = 0; i < titleCells; ++i) {
            if (i == 0)
                textCell(columnLetters(0), Title, m_document.sheetTitle);
            else
                emptyCell(columnLetters(i), Title);
        }
        endRow();
        beginRow();
        for (const Cell& cell : m_cells)
            textCell(cell.letters, Header,
                     Translate(cell.source >= 0 ? m_document.columns.at(cell.source).caption : QString()));
        endRow();
        return flush();
    }

    bool add(const QVariantList& row)
    {
        if (m_row >= kSheetRows - 1 && !startSheet())
            return false;
        beginRow();
        for (const Cell& cell : m_cells) {
            if (cell.source < 0 || cell.source >= row.size())
                continue;
            const QVariant& v = row.at(cell.source);
            if (v.isNull())
                continue;
            switch (cell.type) {
            case ReportColumn::Type::Integer:
                numberCell(cell.letters, Plain);
                appendNumber(m_buffer, v.toLongLong());
                m_buffer.append("</v></c>");
                break;
            case ReportColumn::Type::DateTime: {
                const QDateTime dt = v.toDateTime();
                const QTime t = dt.time();
                numberCell(cell.letters, DateTimeStyle);
                appendNumber(m_buffer,
                             double(dt.date().toJulianDay() - kDayZero)
                                 + double(t.hour() * 3600 + t.minute() * 60 + t.second()) / 86400.0);
                m_buffer.append("</v></c>");
                break;
            }
            case ReportColumn::Type::Date:
                numberCell(cell.letters, DayStyle);
                appendNumber(m_buffer, v.toDate().toJulianDay() - kDayZero);
                m_buffer.append("</v></c>");
                break;
            case ReportColumn::Type::Duration:
                // Spreadsheet time is a fraction of a day.
                numberCell(cell.letters, DurationStyle);
                appendNumber(m_buffer, double(v.toLongLong()) / 1440.0);
                m_buffer.append("</v></c>");
                break;
            default: {
                const QString text = v.toString();
                if (!text.isEmpty())
                    textCell(cell.letters, Plain, text);
                break;
            }
            }
        }
        endRow();
        return m_buffer.size() < kFlushAt || flush();
    }

    // The count row, the end of the last sheet and the parts that name the sheets.
    bool finish(qint64 count)
    {
        if (m_row >= kSheetRows - 1 && !startSheet())
            return false;
        beginRow();
        textCell(columnLetters(0), Header,
                 Translate(ReportCatalogue::recordCountText()) + u':' + QString::number(count));
        endRow();
        if (!endSheet())
            return false;
        return writeParts();
    }

private:
    struct Cell
    {
        int source; // index in the source row, -1 when the column is unknown
        ReportColumn::Type type;
        QByteArray letters;
    };

    int titleWidth() const
    {
        // "A1:F1": the title spans from the first letter to the letter after the colon.
        const QString range = m_document.titleRange;
        const qsizetype colon = range.indexOf(u':');
        if (colon < 0)
            return 1;
        int last = 0;
        for (qsizetype i = colon + 1; i < range.size() && range.at(i).isLetter(); ++i)
            last = last * 26 + (range.at(i).toUpper().unicode() - u'A' + 1);
        return last;
    }

    void beginRow()
    {
        ++m_row;
        m_rowText.clear();
        appendNumber(m_rowText, m_row);
        m_buffer.append("<row r=\"").append(m_rowText).append("\">");
    }

    void endRow() { m_buffer.append("</row>"); }

    void cellHead(const QByteArray& letters, int style)
    {
        m_buffer.append("<c r=\"").append(letters).append(m_rowText).append('"');
        if (style != Plain) {
            m_buffer.append(" s=\"");
            appendNumber(m_buffer, style);
            m_buffer.append('"');
        }
    }

    void numberCell(const QByteArray& letters, int style)
    {
        cellHead(letters, style);
        m_buffer.append("><v>");
    }

    void emptyCell(const QByteArray& letters, int style)
    {
        cellHead(letters, style);
        m_buffer.append("/>");
    }

    void textCell(const QByteArray& letters, int style, const QString& text)
    {
        cellHead(letters, style);
        const bool keepBlanks = !text.isEmpty() && (text.front().isSpace() || text.back().isSpace());
        m_buffer.append(keepBlanks ? " t=\"inlineStr\"><is><t xml:space=\"preserve\">" : " t=\"inlineStr\"><is><t>");
        appendEscaped(m_buffer, text);
        m_buffer.append("</t></is></c>");
    }

    bool flush()
    {
        const bool ok = m_zip.write(m_buffer);
        m_buffer.clear();
        return ok;
    }

    bool endSheet()
    {
        m_buffer.append("</sheetData>");
        if (!m_document.titleRange.isEmpty()) {
            m_buffer.append("<mergeCells count=\"1\"><mergeCell ref=\"");
            appendEscaped(m_buffer, m_document.titleRange);
            m_buffer.append("\"/></mergeCells>");
        }
        m_buffer.append("</worksheet>");
        return flush() && m_zip.end();
    }

    bool part(const QString& name, const QByteArray& text)
    {
        return m_zip.begin(name) && m_zip.write(text) && m_zip.end();
    }

    bool writeParts()
    {
        QByteArray types = kXmlHead;
        types
            += "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
               "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
               "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
               "<Override PartName=\"/xl/workbook.xml\" "
               "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
               "<Override PartName=\"/xl/styles.xml\" "
               "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/>";
        QByteArray book = kXmlHead;
        book += QByteArray("<workbook xmlns=\"") + kMainNs + "\" xmlns:r=\"" + kRelNs + "\"><sheets>";
        QByteArray rels = kXmlHead;
        rels += "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
        const QByteArray sheetType = QByteArray(kRelNs) + "/worksheet";
        for (int i = 1; i <= m_sheets; ++i) {
            const QByteArray n = QByteArray::number(i);
            types += "<Override PartName=\"/xl/worksheets/sheet" + n
                + ".xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
            book += "<sheet name=\"";
            appendEscaped(book, m_names.at(i - 1));
            book += "\" sheetId=\"" + n + "\" r:id=\"rId" + n + "\"/>";
            rels += "<Relationship Id=\"rId" + n + "\" Type=\"" + sheetType + "\" Target=\"worksheets/sheet" + n
                + ".xml\"/>";
        }
        types += "</Types>";
        book += "</sheets></workbook>";
        rels += "<Relationship Id=\"rId" + QByteArray::number(m_sheets + 1) + "\" Type=\"" + QByteArray(kRelNs)
            + "/styles\" Target=\"styles.xml\"/></Relationships>";
        const QByteArray root = QByteArray(kXmlHead)
            + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
              "<Relationship Id=\"rId1\" Type=\""
            + kRelNs
            + "/officeDocument\" Target=\"xl/workbook.xml\"/>"
              "</Relationships>";
        return part(u"xl/workbook.xml"_s, book) && part(u"xl/_rels/workbook.xml.rels"_s, rels)
            && part(u"xl/styles.xml"_s, QByteArray(kStyles)) && part(u"_rels/.rels"_s, root)
            && part(u"[Content_Types].xml"_s, types) && m_zip.finish();
    }

    ZipStreamWriter& m_zip;
    const ReportDocument& m_document;
    QList<Cell> m_cells;
    QStringList m_names;
    QByteArray m_buffer;
    QByteArray m_rowText;
    qint64 m_row = 0;
    int m_sheets = 0;
};

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
    // Rows go through the compressor onto the device as they come: memory stays flat for any size.
    ZipStreamWriter zip(device);
    Book book(zip, document, document.outputColumns());
    qint64 written = 0;
    bool ok = book.startSheet();
    while (ok && !source.atEnd()) {
        const QList<QVariantList> batch = source.fetch(kBatch);
        for (const QVariantList& row : batch) {
            if (!book.add(row)) {
                ok = false;
                break;
            }
            ++written;
        }
        if (ok && progress && !progress(written)) {
            if (error)
                *error = u"The export was stopped."_s;
            if (rows)
                *rows = written;
            return false;
        }
    }
    if (ok && !source.error().isEmpty()) {
        if (error)
            *error = source.error();
        if (rows)
            *rows = written;
        return false;
    }
    if (ok)
        ok = book.finish(written);
    if (!ok && error)
        *error = u"The spreadsheet could not be written: "_s + zip.error();
    if (rows)
        *rows = written;
    return ok;
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
