#include "reports/ReportRowSource.h"

#include "reports/ReportCatalogue.h"
#include "reports/ReportConnections.h"
#include "store/Translate.h"

#include <QSqlError>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

// Where a page of rows read by a key continues: the key's columns after the report's own, the
// condition for the rows after the last one read (its three values are first, first, second key)
// and the order. Passages run newest first; the rows of "who is inside now" by zone and person.
struct ReportPageKey
{
    QString columns;
    QString after;
    QString order;
    bool firstIsDate;
};

namespace {

const ReportPageKey kByRecord{ u", a.\"Tarih\", a.\"Kayit No\""_s,
                               u" AND a.\"Tarih\" <= ? AND (a.\"Tarih\" < ? OR a.\"Kayit No\" < ?)"_s,
                               u" ORDER BY a.\"Tarih\" DESC, a.\"Kayit No\" DESC LIMIT ?"_s, true };
// A small page first: the engine then walks the (zone, person) key instead of sorting all.
const ReportPageKey kByZonePerson{
    u", t.\"Global Bolge No\", t.\"ID\""_s,
    u" AND (t.\"Global Bolge No\" > ? OR (t.\"Global Bolge No\" = ? AND t.\"ID\" > ?))"_s,
    u" ORDER BY t.\"Global Bolge No\", t.\"ID\" LIMIT ?"_s, false
};
// One page never asks for more than this, so a big fetch is still read in bounded steps.
constexpr int kLargestPage = 5000;

QVariant integerValue(const QVariant& v)
{
    if (!v.isValid() || v.isNull())
        return QVariant();
    return QVariant(v.toLongLong());
}

// The wall-clock reading as stored, kept in UTC so that no time zone is looked up per value
// (a local date-time asks the system for its zone every time it is made).
QDateTime wallClock(const QVariant& v)
{
    if (!v.isValid() || v.isNull())
        return QDateTime();
    if (v.typeId() == QMetaType::QString) {
        const QString t = v.toString();
        // The stored text form "yyyy-MM-dd HH:mm:ss", read by position.
        if (t.size() >= 19 && t.at(4) == u'-' && t.at(10) == u' ') {
            const QDate d(QStringView(t).mid(0, 4).toInt(), QStringView(t).mid(5, 2).toInt(),
                          QStringView(t).mid(8, 2).toInt());
            const QTime h(QStringView(t).mid(11, 2).toInt(), QStringView(t).mid(14, 2).toInt(),
                          QStringView(t).mid(17, 2).toInt());
            if (d.isValid() && h.isValid())
                return QDateTime(d, h, Qt::UTC);
        }
    }
    const QDateTime dt = Database::dateTime(v);
    return dt.isValid() ? QDateTime(dt.date(), dt.time(), Qt::UTC) : QDateTime();
}

QString minutesText(qint64 minutes)
{
    return QString::number(minutes / 60).rightJustified(2, u'0') + u':'
        + QString::number(minutes % 60).rightJustified(2, u'0');
}

} // namespace

ReportRowSource::ReportRowSource() = default;

ReportRowSource::~ReportRowSource()
{
    close();
}

void ReportRowSource::openRows(const ReportStatement& statement, const QList<QVariantList>& rows)
{
    close();
    m_statement = statement;
    m_fetched = 0;
    m_error.clear();
    m_fromRows = true;
    m_textColumns.clear();
    for (int i = 0; i < statement.columns.size(); ++i) {
        if (isStationText(statement.columns.at(i).type))
            m_textColumns << i;
    }
    m_page = rows;
    m_lastPage = true;
    m_atEnd = rows.isEmpty();
}

bool ReportRowSource::open(const Database& db, const ReportStatement& statement, QString* error, Reading reading)
{
    close();
    m_statement = statement;
    if (reading == Reading::Through && db.isPostgreSQL())
        m_statement.paging = ReportStatement::Paging::Whole;
    m_fetched = 0;
    m_error.clear();
    m_havePosition = false;
    m_lastPage = false;
    if (statement.isRefused()) {
        m_atEnd = true;
        return true;
    }
    QString cloneError;
    m_db = ReportConnections::take(db, &cloneError);
    if (!m_db) {
        m_error = cloneError;
        if (error)
            *error = cloneError;
        m_atEnd = true;
        return false;
    }
    m_atEnd = false;
    m_width = -1;
    if (m_statement.paging != ReportStatement::Paging::Whole)
        return true;
    QString queryError;
    m_query = std::make_unique<QSqlQuery>(m_db->query(statement.sql, statement.params, &queryError));
    if (!m_query->isActive()) {
        m_error = queryError;
        if (error)
            *error = queryError;
        close();
        return false;
    }
    return true;
}

void ReportRowSource::close()
{
    // The query goes before its connection, which is kept for the next report.
    m_query.reset();
    ReportConnections::giveBack(std::move(m_db));
    m_pending.clear();
    m_page.clear();
    m_pageNext = 0;
    m_fromRows = false;
    m_atEnd = true;
}

bool ReportRowSource::isOpen() const
{
    return m_db != nullptr;
}

QList<QVariantList> ReportRowSource::fetch(int maxRows)
{
    QList<QVariantList> rows;
    if (m_atEnd || maxRows <= 0)
        return rows;
    rows.reserve(qMin(maxRows, kLargestPage));
    if (m_fromRows || m_statement.paging != ReportStatement::Paging::Whole) {
        while (rows.size() < maxRows) {
            if (m_pageNext >= m_page.size()) {
                m_page.clear();
                m_pageNext = 0;
                if (m_lastPage)
                    break;
                readPage(qMin<int>(maxRows - static_cast<int>(rows.size()), kLargestPage));
                continue;
            }
            const qsizetype take = qMin<qsizetype>(maxRows - rows.size(), m_page.size() - m_pageNext);
            for (qsizetype i = 0; i < take; ++i) {
                rows << std::move(m_page[m_pageNext++]);
                // Rows handed in hold their station texts in Turkish.
                if (m_fromRows) {
                    for (int column : std::as_const(m_textColumns))
                        rows.last()[column] = shown(rows.last().value(column).toString());
                }
            }
        }
        m_atEnd = m_lastPage && m_pageNext >= m_page.size();
    } else if (m_statement.shape == ReportStatement::Shape::Monthly) {
        QVariantList row;
        while (rows.size() < maxRows && nextMonthlyRow(&row))
            rows << row;
    } else {
        QVariantList raw;
        while (rows.size() < maxRows && readRaw(&raw))
            rows << shaped(raw);
    }
    m_fetched += rows.size();
    return rows;
}

void ReportRowSource::readPage(int limit)
{
    if (m_statement.paging == ReportStatement::Paging::BySecond)
        readSecondsPage(limit);
    else if (m_statement.paging == ReportStatement::Paging::ByZoneAndPerson)
        readKeyedPage(kByZonePerson, limit);
    else
        readKeyedPage(kByRecord, limit);
}

void ReportRowSource::readKeyedPage(const ReportPageKey& key, int limit)
{
    QString sql = m_statement.pageSelect + key.columns + m_statement.pageFrom;
    QVariantList params = m_statement.pageParams;
    if (m_havePosition) {
        sql += key.after;
        params << m_lastDate << m_lastDate << m_lastNumber;
    }
    sql += key.order;
    params << limit;
    QString error;
    QSqlQuery q = m_db->query(sql, params, &error);
    if (!q.isActive()) {
        m_error = error;
        m_lastPage = true;
        return;
    }
    const int width = static_cast<int>(m_statement.columns.size());
    int got = 0;
    QVariantList raw;
    raw.reserve(width + 2);
    QVariant lastFirst;
    while (q.next()) {
        raw.clear();
        for (int i = 0; i < width; ++i)
            raw << q.value(i);
        lastFirst = q.value(width);
        m_lastNumber = q.value(width + 1);
        m_page << shaped(raw);
        ++got;
    }
    if (got > 0) {
        m_lastDate = key.firstIsDate ? m_db->toSql(Database::dateTime(lastFirst)) : lastFirst;
        m_havePosition = true;
    }
    if (q.lastError().isValid()) {
        m_error = q.lastError().text();
        m_lastPage = true;
    }
    if (got < limit)
        m_lastPage = true;
}

void ReportRowSource::readSecondsPage(int limit)
{
    // The page reaches back to the second of the limit-th record still unread and takes that
    // whole second: identical rows share their second, so none is split between two pages.
    QString older;
    QVariantList params = m_statement.pageParams;
    if (m_havePosition) {
        older = u" AND a.\"Tarih\" < ?"_s;
        params << m_lastDate;
    }
    QString error;
    QVariant firstSecond;
    {
        QSqlQuery q = m_db->query(u"SELECT a.\"Tarih\""_s + m_statement.pageFrom + older
                                      + u" ORDER BY a.\"Tarih\" DESC LIMIT 1 OFFSET ?"_s,
                                  params + QVariantList{ limit - 1 }, &error);
        if (q.next())
            firstSecond = m_db->toSql(Database::dateTime(q.value(0)));
        else if (!q.isActive() || q.lastError().isValid()) {
            m_error = q.isActive() ? q.lastError().text() : error;
            m_lastPage = true;
            return;
        }
    }
    QString sql = m_statement.pageSelect + m_statement.pageFrom + older;
    if (firstSecond.isValid()) {
        sql += u" AND a.\"Tarih\" >= ?"_s;
        params << firstSecond;
    }
    sql += m_statement.pageOrder;
    QSqlQuery q = m_db->query(sql, params, &error);
    if (!q.isActive()) {
        m_error = error;
        m_lastPage = true;
        return;
    }
    const int width = static_cast<int>(m_statement.columns.size());
    QVariantList raw;
    raw.reserve(width);
    while (q.next()) {
        raw.clear();
        for (int i = 0; i < width; ++i)
            raw << q.value(i);
        m_page << shaped(raw);
    }
    if (q.lastError().isValid()) {
        m_error = q.lastError().text();
        m_lastPage = true;
    }
    // Fewer than `limit` records were left: this page took them all.
    if (!firstSecond.isValid())
        m_lastPage = true;
    m_lastDate = firstSecond;
    m_havePosition = true;
}

bool ReportRowSource::readRaw(QVariantList* row)
{
    if (!m_query || m_atEnd)
        return false;
    if (!m_query->next()) {
        if (m_query->lastError().isValid())
            m_error = m_query->lastError().text();
        m_atEnd = true;
        m_query.reset();
        return false;
    }
    // The width once per statement: a record description per row costs more than the row.
    if (m_width < 0)
        m_width = m_query->record().count();
    const int width = m_width;
    row->clear();
    row->reserve(width);
    for (int i = 0; i < width; ++i)
        *row << m_query->value(i);
    return true;
}

QVariantList ReportRowSource::shaped(const QVariantList& raw) const
{
    QVariantList row;
    row.reserve(m_statement.columns.size());
    for (int i = 0; i < m_statement.columns.size(); ++i) {
        const QVariant v = raw.value(i);
        const bool empty = !v.isValid() || v.isNull();
        switch (m_statement.columns.at(i).type) {
        case ReportColumn::Type::Integer:
        case ReportColumn::Type::Duration:
            row << integerValue(v);
            break;
        case ReportColumn::Type::Text:
            row << (empty ? QString() : v.toString());
            break;
        case ReportColumn::Type::DateTime: {
            const QDateTime dt = wallClock(v);
            row << (dt.isValid() ? QVariant(dt) : QVariant());
            break;
        }
        case ReportColumn::Type::Date: {
            const QDateTime dt = wallClock(v);
            row << (dt.isValid() ? QVariant(dt.date()) : QVariant());
            break;
        }
        case ReportColumn::Type::Direction:
            row << (empty ? QString() : shown(ReportCatalogue::directionText(directionOf(v.toInt()))));
            break;
        case ReportColumn::Type::Presence:
            row << (empty ? QString() : shown(ReportCatalogue::presenceText(v.toInt() == 1)));
            break;
        case ReportColumn::Type::PassageResult:
            row << (empty ? QString() : shown(ReportCatalogue::resultText(passageCodeOf(v.toInt()))));
            break;
        case ReportColumn::Type::Performer:
            row << (empty ? QString() : shown(ReportCatalogue::performerText(passageCodeOf(v.toInt()))));
            break;
        case ReportColumn::Type::StationText:
            row << (empty ? QString() : shown(v.toString().trimmed()));
            break;
        case ReportColumn::Type::ZoneName:
            row << m_statement.zoneName;
            break;
        }
    }
    return row;
}

bool ReportRowSource::isStationText(ReportColumn::Type type)
{
    return type == ReportColumn::Type::Direction || type == ReportColumn::Type::Presence
        || type == ReportColumn::Type::PassageResult || type == ReportColumn::Type::Performer
        || type == ReportColumn::Type::StationText;
}

QString ReportRowSource::shown(const QString& turkish) const
{
    // A report holds a handful of such texts: each is looked up once per source.
    if (turkish.isEmpty() || m_keepTurkish)
        return turkish;
    auto it = m_shown.constFind(turkish);
    if (it == m_shown.cend())
        it = m_shown.insert(turkish, Translate(turkish));
    return *it;
}

bool ReportRowSource::nextMonthlyRow(QVariantList* row)
{
    // Raw rows: person, first name, surname, department, day, earliest, latest; ordered by
    // person and day. One report row gathers a person's days.
    if (m_pending.isEmpty() && !readRaw(&m_pending))
        return false;
    const QDate first = m_statement.monthStart;
    const int days = first.daysInMonth();
    row->clear();
    *row << integerValue(m_pending.value(0)) << m_pending.value(1).toString() << m_pending.value(2).toString()
         << m_pending.value(3).toString();
    for (int d = 0; d < days; ++d)
        *row << QString();
    const QVariant person = m_pending.value(0);
    int present = 0;
    qint64 minutes = 0;
    while (true) {
        const QDateTime earliest = wallClock(m_pending.value(5));
        const QDateTime latest = wallClock(m_pending.value(6));
        const int day = earliest.date().day();
        if (earliest.isValid() && day >= 1 && day <= days) {
            (*row)[3 + day] = QString(earliest.toString(u"HH:mm"_s) + u'-' + latest.toString(u"HH:mm"_s));
            ++present;
            minutes += earliest.secsTo(latest) / 60;
        }
        QVariantList next;
        if (!readRaw(&next)) {
            m_pending.clear();
            break;
        }
        m_pending = next;
        if (m_pending.value(0) != person)
            break;
    }
    *row << QVariant(qint64(present)) << QVariant(minutes);
    return true;
}

qint64 ReportRowSource::count(const Database& db, const ReportStatement& statement, QString* error)
{
    if (statement.isRefused())
        return 0;
    const QVariant n = db.scalar(statement.countSql, statement.countParams, error);
    return n.isValid() ? n.toLongLong() : -1;
}

QString ReportRowSource::durationText(qint64 minutes)
{
    return minutesText(minutes);
}
