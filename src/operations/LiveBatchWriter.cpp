#include "operations/LiveBatchWriter.h"

#include "operations/RecordLookup.h"
#include "operations/RecordWriteLock.h"
#include "store/Database.h"
#include "store/Transaction.h"

#include <QSqlError>

using namespace Qt::StringLiterals;

namespace {

// Keys per look-up statement and rows per insert statement: well below the engines' limits on
// bound values.
constexpr int KeysPerQuery = 100;
constexpr int RowsPerInsert = 200;
// Seconds of passages kept in memory behind the newest one once the memory is full.
constexpr qint64 RememberSeconds = 3600;

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

} // namespace

LiveBatchWriter::LiveBatchWriter(Database& db)
    : m_db(db)
{ }

bool LiveBatchWriter::store(const QList<CardEvent>& events, Outcome* outcome, QString* error)
{
    Outcome local;
    Outcome& out = outcome ? *outcome : local;
    out = Outcome();
    if (events.isEmpty())
        return true;

    QList<RecordKey> keys;
    QSet<RecordKey> distinct;
    QSet<qint64> cards;
    QDate first = events.first().time.date();
    QDate last = first;
    for (const CardEvent& e : events) {
        const RecordKey key = RecordKey::of(e.panelNumber, e.userId, e.time);
        if (!distinct.contains(key)) {
            distinct.insert(key);
            keys.append(key);
        }
        cards.insert(e.cardId);
        first = qMin(first, e.time.date());
        last = qMax(last, e.time.date());
    }

    RecordWriteLock lock;
    Transaction transaction(m_db);
    QString why;
    if (!transaction.isActive()) {
        setError(error, transaction.error());
        return false;
    }
    QHash<RecordKey, int> stored;
    RecordLookup lookup(m_db);
    if (!lock.acquire(m_db, &why) || !storedCounts(keys, stored, &why) || !lookup.loadUserTypes(cards, &why)
        || !lookup.loadVisits(cards, first, last, &why) || !lookup.loadZones(&why)) {
        setError(error, why);
        return false;
    }

    // Counted apart and taken over only once the batch is committed, so a failed batch can come
    // again unchanged.
    QHash<RecordKey, int> seenNow;
    QList<RecordRow> rows;
    rows.reserve(events.size());
    for (const CardEvent& e : events) {
        const RecordKey key = RecordKey::of(e.panelNumber, e.userId, e.time);
        const int n = m_seen.value(key) + ++seenNow[key];
        if (stored.value(key) >= n) {
            ++out.duplicates;
            continue;
        }
        RecordRow row;
        row.panelId = e.panelNumber;
        row.door = e.door;
        row.localZone = lookup.liveLocalZone(e.panelNumber, e.door);
        row.globalZone = lookup.liveGlobalZone(e.panelNumber, row.localZone);
        row.userId = e.userId;
        row.cardId = e.cardId;
        row.time = e.time;
        row.passageType = e.passageType;
        row.code = e.code;
        row.userType = lookup.userType(e.cardId);
        row.visitorNo = lookup.visitorNo(e.cardId, e.time);
        rows.append(row);
    }
    if (!insertRows(rows, &why) || !transaction.commit(&why)) {
        setError(error, why);
        return false;
    }
    for (auto it = seenNow.cbegin(); it != seenNow.cend(); ++it) {
        m_seen[it.key()] += it.value();
        m_newestSecond = qMax(m_newestSecond, it.key().second);
    }
    forgetOld();
    out.stored = rows;
    return true;
}

bool LiveBatchWriter::storedCounts(const QList<RecordKey>& keys, QHash<RecordKey, int>& counts, QString* error) const
{
    for (qsizetype start = 0; start < keys.size(); start += KeysPerQuery) {
        const qsizetype count = qMin<qsizetype>(KeysPerQuery, keys.size() - start);
        QString sql = u"SELECT \"Panel ID\", \"ID\", \"Tarih\" FROM \"AccessDatas\" WHERE "_s;
        QVariantList params;
        for (qsizetype i = 0; i < count; ++i) {
            const RecordKey& key = keys.at(start + i);
            if (i)
                sql += u" OR "_s;
            sql += u"(\"Panel ID\" = ? AND \"ID\" = ? AND \"Tarih\" = ?)"_s;
            const QDate day = QDate::fromJulianDay(key.second / 86400);
            const QTime time = QTime(0, 0).addSecs(static_cast<int>(key.second % 86400));
            params << key.panel << key.userId << m_db.toSql(QDateTime(day, time));
        }
        QSqlQuery q = m_db.query(sql, params, error);
        if (!q.isActive())
            return false;
        while (q.next())
            ++counts[RecordKey::ofStored(q.value(0).toInt(), q.value(1).toInt(), q.value(2))];
    }
    return true;
}

bool LiveBatchWriter::insertRows(QList<RecordRow>& rows, QString* error)
{
    if (rows.isEmpty())
        return true;
    const QStringList columns = RecordRow::columns();
    const QString head = u"INSERT INTO \"AccessDatas\" ("_s + Database::quotedList(columns) + u") VALUES "_s;
    QString tuple = u"("_s;
    for (int c = 0; c < columns.size(); ++c)
        tuple += c ? u", ?"_s : u"?"_s;
    tuple += u')';

    if (m_db.isSQLite()) {
        // In-process engine: one prepared row at a time is fastest, and gives each row its id.
        QSqlQuery q(m_db.connection());
        if (!q.prepare(head + tuple)) {
            setError(error, q.lastError().text());
            return false;
        }
        for (RecordRow& row : rows) {
            const QVariantList values = row.values(m_db);
            for (int c = 0; c < values.size(); ++c)
                q.bindValue(c, values.at(c));
            if (!q.exec()) {
                setError(error, q.lastError().text());
                return false;
            }
            row.recordNo = q.lastInsertId().toLongLong();
        }
        return true;
    }
    // A server round trip per statement: many rows each, the ids coming back in the rows' order.
    for (qsizetype start = 0; start < rows.size(); start += RowsPerInsert) {
        const qsizetype count = qMin<qsizetype>(RowsPerInsert, rows.size() - start);
        QString sql = head;
        QVariantList params;
        for (qsizetype i = 0; i < count; ++i) {
            sql += i ? u", "_s + tuple : tuple;
            params += rows.at(start + i).values(m_db);
        }
        sql += u" RETURNING \"Kayit No\""_s;
        QSqlQuery q = m_db.query(sql, params, error);
        if (!q.isActive())
            return false;
        for (qsizetype i = 0; i < count && q.next(); ++i)
            rows[start + i].recordNo = q.value(0).toLongLong();
    }
    return true;
}

void LiveBatchWriter::forgetOld()
{
    if (m_seen.size() <= MaxRemembered)
        return;
    const qint64 horizon = m_newestSecond - RememberSeconds;
    m_seen.removeIf([horizon](const auto& it) { return it.key().second < horizon; });
    if (m_seen.size() > MaxRemembered)
        m_seen.clear(); // a flood within the last hour: start counting afresh
}
