#include "reports/ReportPainter.h"

#include "reports/ReportCatalogue.h"
#include "reports/ReportRowSource.h"
#include "reports/ReportValueText.h"
#include "store/Translate.h"

#include <QDateTime>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QIODevice>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

using namespace Qt::StringLiterals;

namespace {

constexpr int kBatch = 1000;
// Rows measured for the column widths before the first page is drawn.
constexpr int kMeasuredRows = 300;
constexpr int kLandscapeAbove = 110; // characters of column width
// The smallest print the font is shrunk to so that every whole value fits across the page.
constexpr qreal kSmallestPoints = 4.0;
// Text columns give way down to this many characters before the font is shrunk.
constexpr qreal kNarrowestText = 6.0;

// Values that lose their meaning when cut (a date, a card number, an ID) are always printed whole.
bool keptWhole(ReportColumn::Type type)
{
    return type == ReportColumn::Type::Integer || type == ReportColumn::Type::DateTime
        || type == ReportColumn::Type::Date || type == ReportColumn::Type::Duration;
}

// The widest value a column of this kind may hold, beyond the rows measured: every digit of a
// card number, a date with its seconds.
QString widestExpected(const ReportColumn& column)
{
    switch (column.type) {
    case ReportColumn::Type::Integer:
        return QString(qBound(1, column.width - 1, 10), u'0');
    case ReportColumn::Type::DateTime:
        return u"00/00/0000 00:00:00"_s;
    case ReportColumn::Type::Date:
        return u"00/00/0000"_s;
    case ReportColumn::Type::Duration:
        return u"000:00"_s;
    default:
        return QString();
    }
}

struct Layout
{
    QRectF page;
    QList<int> out;
    QList<qreal> x; // left edge of each output column
    QList<qreal> width;
    QList<bool> whole; // values drawn uncut
    // Above 1 when the columns need more than the page's width at this font size.
    qreal overflow = 1;
    qreal rowHeight = 0;
    qreal headerHeight = 0;
    qreal footerHeight = 0;
    qreal pad = 0;
    int rowsPerPage = 1;
};

class PageWriter
{
public:
    PageWriter(QPainter& painter, QPagedPaintDevice* device, const ReportDocument& document, const Layout& layout,
               const QFont& font)
        : m_p(painter)
        , m_device(device)
        , m_doc(document)
        , m_l(layout)
        , m_font(font)
        , m_bold(font)
        , m_title(font)
        , m_fm(font, device)
        , m_printed(document.printedAt.toString(ReportValueText::dateTimeFormat()))
        , m_pageWord(Translate(u"Sayfa"_s))
    {
        m_bold.setBold(true);
        m_title.setBold(true);
        m_title.setPointSizeF(font.pointSizeF() * 1.6);
        if (document.expectedRows >= 0)
            m_pages = qMax<qint64>(1, (document.expectedRows + layout.rowsPerPage - 1) / layout.rowsPerPage);
    }

    bool row(const QVariantList& values)
    {
        if (m_onPage == 0 || m_onPage >= m_l.rowsPerPage) {
            if (!nextPage())
                return false;
        }
        const qreal y = m_l.page.top() + m_l.headerHeight + m_onPage * m_l.rowHeight;
        if (m_onPage % 2 == 1)
            m_p.fillRect(QRectF(m_l.page.left(), y, m_l.page.width(), m_l.rowHeight), QColor(238, 238, 238));
        m_p.setFont(m_font);
        for (int i = 0; i < m_l.out.size(); ++i) {
            const ReportColumn& c = m_doc.columns.value(m_l.out.at(i));
            const QString text = ReportValueText::text(values.value(m_l.out.at(i)), c);
            if (text.isEmpty())
                continue;
            const QRectF cell(m_l.x.at(i) + m_l.pad, y, m_l.width.at(i) - 2 * m_l.pad, m_l.rowHeight);
            const bool number = c.type == ReportColumn::Type::Integer;
            const int align = (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter;
            if (m_l.whole.at(i))
                m_p.drawText(cell, align | Qt::TextDontClip, text);
            else
                m_p.drawText(cell, align, fitted(text, cell.width()));
        }
        ++m_onPage;
        return true;
    }

    void finish(qint64 count)
    {
        // The count takes the line kept free below the last row of a page: it never needs a
        // page of its own, so the page total known beforehand holds.
        if (m_page == 0)
            nextPage();
        const qreal y = m_l.page.top() + m_l.headerHeight + m_onPage * m_l.rowHeight;
        m_p.setFont(m_bold);
        m_p.drawText(QRectF(m_l.page.left() + m_l.pad, y, m_l.page.width(), m_l.rowHeight),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     Translate(ReportCatalogue::recordCountText()) + u": "_s + QString::number(count));
        footer();
    }

private:
    // Long values are cut with an ellipsis; repeated values (names, companies) are cut once.
    QString fitted(const QString& text, qreal width)
    {
        if (m_fm.horizontalAdvance(text) <= width)
            return text;
        const QString key = text + QChar(0) + QString::number(qRound(width));
        auto it = m_elided.constFind(key);
        if (it != m_elided.cend())
            return *it;
        if (m_elided.size() > 20000)
            m_elided.clear();
        const QString cut = m_fm.elidedText(text, Qt::ElideRight, width);
        m_elided.insert(key, cut);
        return cut;
    }

    bool nextPage()
    {
        if (m_page > 0) {
            footer();
            if (!m_device->newPage())
                return false;
        }
        ++m_page;
        m_onPage = 0;
        header();
        return true;
    }

    void header()
    {
        const QRectF& page = m_l.page;
        const QFontMetricsF titleMetrics(m_title, m_device);
        m_p.setFont(m_title);
        m_p.drawText(QRectF(page.left(), page.top(), page.width(), titleMetrics.height() * 1.3),
                     Qt::AlignHCenter | Qt::AlignVCenter, m_doc.title);
        m_p.setFont(m_font);
        const qreal captionTop = page.top() + m_l.headerHeight - m_l.rowHeight * 1.2;
        m_p.drawText(QRectF(page.left(), captionTop - m_l.rowHeight, page.width(), m_l.rowHeight),
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, m_printed);
        m_p.setFont(m_bold);
        for (int i = 0; i < m_l.out.size(); ++i) {
            const QString caption = Translate(m_doc.columns.value(m_l.out.at(i)).caption);
            const QRectF cell(m_l.x.at(i) + m_l.pad, captionTop, m_l.width.at(i) - 2 * m_l.pad, m_l.rowHeight);
            m_p.drawText(cell, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter, fitted(caption, cell.width()));
        }
        const qreal line = captionTop + m_l.rowHeight * 1.1;
        m_p.setPen(QPen(Qt::black, 0));
        m_p.drawLine(QPointF(page.left(), line), QPointF(page.right(), line));
    }

    void footer()
    {
        const QRectF& page = m_l.page;
        QString text = m_pageWord + u' ' + QString::number(m_page);
        if (m_pages > 0)
            text += u" / "_s + QString::number(qMax<qint64>(m_pages, m_page));
        m_p.setFont(m_font);
        m_p.drawText(QRectF(page.left(), page.bottom() - m_l.footerHeight, page.width(), m_l.footerHeight),
                     Qt::AlignHCenter | Qt::AlignBottom, text);
    }

    QPainter& m_p;
    QPagedPaintDevice* m_device;
    const ReportDocument& m_doc;
    const Layout& m_l;
    QFont m_font;
    QFont m_bold;
    QFont m_title;
    QFontMetricsF m_fm;
    QString m_printed;
    QString m_pageWord;
    QHash<QString, QString> m_elided;
    qint64 m_pages = 0;
    int m_page = 0;
    int m_onPage = 0;
};

// Passes the PDF on to the real device and remembers a failed write, which the PDF writer
// itself does not report.
class CheckedDevice : public QIODevice
{
public:
    explicit CheckedDevice(QIODevice* target)
        : m_target(target)
    { }
    bool failed() const { return m_failed; }
    QString targetError() const { return m_target->errorString(); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        if (m_failed)
            return -1;
        const qint64 n = m_target->write(data, size);
        if (n != size) {
            m_failed = true;
            return -1;
        }
        return n;
    }

private:
    QIODevice* m_target;
    bool m_failed = false;
};

Layout makeLayout(QPagedPaintDevice* device, const ReportDocument& document, const QList<QVariantList>& sample,
                  const QFont& font)
{
    Layout l;
    const QFontMetricsF fm(font, device);
    QFont bold(font);
    bold.setBold(true);
    const QFontMetricsF boldMetrics(bold, device);
    l.page = QRectF(0, 0, device->width(), device->height());
    l.out = document.outputColumns();
    l.rowHeight = fm.height() * 1.35;
    l.pad = fm.averageCharWidth() * 0.5;
    l.headerHeight = QFontMetricsF(
                         [&] {
                             QFont t(font);
                             t.setPointSizeF(font.pointSizeF() * 1.6);
                             return t;
                         }(),
                         device)
                         .height()
            * 1.3
        + l.rowHeight * 2.6;
    l.footerHeight = l.rowHeight * 1.5;
    // Each column as wide as its caption or its widest measured value, within reason; columns
    // kept whole as wide as their widest possible value.
    QList<qreal> wanted;
    qreal wholeTotal = 0;
    qreal textTotal = 0;
    qreal textNarrowest = 0;
    for (int c : l.out) {
        const ReportColumn& column = document.columns.value(c);
        const bool whole = keptWhole(column.type);
        qreal w = boldMetrics.horizontalAdvance(Translate(column.caption));
        qreal values = fm.horizontalAdvance(widestExpected(column));
        for (const QVariantList& row : sample)
            values = qMax(values, fm.horizontalAdvance(ReportValueText::text(row.value(c), column)));
        if (whole) {
            w = values + 2 * l.pad;
            wholeTotal += w;
        } else {
            w = qMin(qMax(w, values), fm.averageCharWidth() * 40) + 2 * l.pad;
            textTotal += w;
            textNarrowest += qMin(w, fm.averageCharWidth() * kNarrowestText + 2 * l.pad);
        }
        wanted << w;
        l.whole << whole;
    }
    const qreal room = l.page.width();
    // Wider than the page: text columns give way first, then the font must shrink.
    l.overflow = (wholeTotal + textNarrowest) / room;
    const qreal textScale = wholeTotal + textTotal <= room || textTotal <= 0
        ? 1
        : qMax(textNarrowest / textTotal, (room - wholeTotal) / textTotal);
    qreal total = 0;
    for (int i = 0; i < wanted.size(); ++i) {
        if (!l.whole.at(i))
            wanted[i] *= textScale;
        total += wanted.at(i);
    }
    // Room to spare is shared out; a page that is still too narrow is caught by the overflow.
    const qreal scale = total > 0 && total < room ? room / total : 1;
    qreal x = l.page.left();
    for (qreal w : wanted) {
        l.x << x;
        l.width << w * scale;
        x += w * scale;
    }
    l.rowsPerPage = qMax(1, int((l.page.height() - l.headerHeight - l.footerHeight) / l.rowHeight) - 1);
    return l;
}

} // namespace

ReportPainter::ReportPainter() = default;

QFont ReportPainter::reportFont(qreal pointSize)
{
    // DejaVu Sans covers Turkish and Arabic; the family list falls back where it is missing.
    QFont font;
    font.setFamilies({ u"DejaVu Sans"_s, u"Noto Sans"_s, u"Arial"_s });
    font.setPointSizeF(pointSize);
    return font;
}

bool ReportPainter::wantsLandscape(const ReportDocument& document)
{
    int total = 0;
    for (int c : document.outputColumns())
        total += document.columns.value(c).width;
    return total > kLandscapeAbove;
}

bool ReportPainter::paint(QPagedPaintDevice* device, ReportRowSource& source, const ReportDocument& document,
                          qint64* rows, QString* error, const Progress& progress)
{
    if (rows)
        *rows = 0;
    // Fonts come from the graphical application object; without one Qt would abort.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        if (error)
            *error = u"Pages can only be painted in a program with a QGuiApplication (use the offscreen platform "
                     u"on a machine without a display)."_s;
        return false;
    }
    QPainter painter;
    if (!device || !painter.begin(device)) {
        if (error)
            *error = u"The page cannot be painted on."_s;
        return false;
    }
    QFont font = reportFont(m_pointSize);
    QList<QVariantList> batch = source.fetch(kMeasuredRows);
    Layout layout = makeLayout(device, document, batch, font);
    // Shrinking the print keeps every date and number whole when the columns are too many.
    for (int attempt = 0; attempt < 3 && layout.overflow > 1 && font.pointSizeF() > kSmallestPoints; ++attempt) {
        font = reportFont(qMax(kSmallestPoints, font.pointSizeF() / layout.overflow * 0.98));
        layout = makeLayout(device, document, batch, font);
    }
    PageWriter pages(painter, device, document, layout, font);
    qint64 written = 0;
    bool ok = true;
    while (ok) {
        for (const QVariantList& row : std::as_const(batch)) {
            if (!pages.row(row)) {
                if (error)
                    *error = u"A new page could not be started."_s;
                ok = false;
                break;
            }
            ++written;
        }
        if (!ok || source.atEnd())
            break;
        if (progress && !progress(written)) {
            if (error)
                *error = u"The printing was stopped."_s;
            ok = false;
            break;
        }
        batch = source.fetch(kBatch);
    }
    if (ok && !source.error().isEmpty()) {
        if (error)
            *error = source.error();
        ok = false;
    }
    if (ok)
        pages.finish(written);
    painter.end();
    if (rows)
        *rows = written;
    return ok;
}

bool ReportPainter::writePdf(QIODevice* device, ReportRowSource& source, const ReportDocument& document, qint64* rows,
                             QString* error, const Progress& progress)
{
    if (!device || !device->isWritable()) {
        if (rows)
            *rows = 0;
        if (error)
            *error = u"The file is not open for writing."_s;
        return false;
    }
    CheckedDevice checked(device);
    checked.open(QIODevice::WriteOnly);
    bool ok = false;
    {
        QPdfWriter writer(&checked);
        writer.setTitle(document.title);
        writer.setCreator(u"KX-410 station"_s);
        writer.setResolution(300);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                         wantsLandscape(document) ? QPageLayout::Landscape : QPageLayout::Portrait,
                                         QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
        ok = paint(&writer, source, document, rows, error, progress);
    }
    // The writer sends the last of the document when it goes; a full disk may show only then.
    if (ok && checked.failed()) {
        if (error)
            *error = u"Writing the file failed: "_s + checked.targetError();
        ok = false;
    }
    return ok;
}
