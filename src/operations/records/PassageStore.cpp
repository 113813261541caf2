#include "operations/records/PassageStore.h"

#include "operations/records/RecordErasures.h"
#include "operations/records/RecordLookup.h"
#include "operations/records/RecordWriteLock.h"
#include "store/Database.h"
#include "store/Transaction.h"
#include "store/Whereabouts.h"

#include <QMap>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

// Up to this many keys of a panel are looked for one by one; more are read by time range.
constexpr int KeysPerQuery = 100;
constexpr int ProgressStep = 1000;

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

// The granted passages of personnel: the only ones that say where a person is.
QList<Whereabouts::Passage> whereaboutsOf(const QList<RecordRow>& rows)
{
    QList<Whereabouts::Passage> out;
    for (const RecordRow& row : rows) {
        if (row.code != PassageCode::Granted || row.userType != UserType::Personnel)
            continue;
        out.append({ row.recordNo, row.userId, row.globalZone, row.panelId, row.door, row.cardId,
                     storedNumber(row.direction), row.time });
    }
    return out;
}

} // namespace

RecordKey PassageStore::Passage::key() const
{
    return RecordKey::of(panel, door, direction, code, userId, time);
}

PassageStore::PassageStore(Database& db)
    : m_db(db)
{ }

bool PassageStore::store(const QList<Passage>& passages, const Options& options, Outcome* outcome, QString* error)
{
    Outcome local;
    Outcome& out = outcome ? *outcome : local;
    out = Outcome();
    if (passages.isEmpty())
        return true;

    QSet<qint64> cards;
    QDate first = passages.first().time.date();
    QDate last = first;
    for (const Passage& p : passages) {
        if (!p.person)
            cards.insert(p.cardId);
        first = qMin(first, p.time.date());
        last = qMax(last, p.time.date());
    }

    RecordWriteLock lock;
    Transaction transaction(m_db);
    if (!transaction.isActive()) {
        setError(error, transaction.error());
        return false;
    }
    QString why;
    QHash<RecordKey, int> stored;
    RecordLookup lookup(m_db);
    if (!lock.acquire(m_db, &why)
        || (options.skipStored && !storedCounts(passages, options.sinceLastErase, stored, &why))
        || !lookup.loadUserTypes(cards, &why) || !lookup.loadVisits(cards, first, last, &why)
        || !lookup.loadZones(&why)) {
        setError(error, why);
        return false;
    }

    QList<RecordRow> rows;
    rows.reserve(passages.size());
    const int total = static_cast<int>(passages.size());
    for (int i = 0; i < total; ++i) {
        const Passage& p = passages.at(i);
        if (options.skipStored) {
            const RecordKey key = p.key();
            const int n = ++out.handedIn[key] + (options.handedInBefore ? options.handedInBefore->value(key) : 0);
            if (stored.value(key) >= n) {
                ++out.duplicates;
                continue;
            }
        }
        RecordRow row;
        row.panelId = p.panel;
        row.door = p.door;
        const RecordLookup::Zones zones = lookup.zonesOf(p.panel, p.door, p.reportedZone);
        row.localZone = zones.local;
        row.globalZone = zones.global;
        row.userId = p.userId;
        row.cardId = p.cardId;
        row.time = p.time;
        row.direction = p.direction;
        row.code = p.code;
        if (p.person) {
            row.userType = p.person->userType;
            row.visitorNo = p.person->visitorNo;
        } else {
            row.userType = lookup.userType(p.cardId);
            row.visitorNo = lookup.visitorNo(p.cardId, p.time);
        }
        rows.append(row);
        if (options.progress && (i + 1) % ProgressStep == 0)
            options.progress(i + 1, total);
    }

    QList<QVariantList> values;
    values.reserve(rows.size());
    for (const RecordRow& row : rows)
        values.append(row.values(m_db));
    QList<qint64> ids;
    if (!rows.isEmpty()
        && !m_db.insertRows(u"AccessDatas"_s, RecordRow::columns(), values, &why, &ids, u"Kayit No"_s)) {
        setError(error, why);
        return false;
    }
    for (qsizetype i = 0; i < rows.size() && i < ids.size(); ++i)
        rows[i].recordNo = ids.at(i);
    if (!Whereabouts::record(m_db, whereaboutsOf(rows), &why) || !transaction.commit(&why)) {
        setError(error, why);
        return false;
    }
    out.stored = rows;
    if (options.progress)
        options.progress(total, total);
    return true;
}

bool PassageStore::storedCounts(const QList<Passage>& passages, bool sinceLastErase, QHash<RecordKey, int>& counts,
                                QString* error) const
{
    QHash<qint32, RecordErasures::Mark> erasedAt;
    if (sinceLastErase && !RecordErasures(m_db).loadAll(&erasedAt, error))
        return false;
    QMap<qint32, QList<RecordKey>> keysOfPanel;
    QSet<RecordKey> seen;
    for (const Passage& p : passages) {
        const RecordKey key = p.key();
        if (!seen.contains(key)) {
            seen.insert(key);
            keysOfPanel[p.panel].append(key);
        }
    }
    for (auto it = keysOfPanel.cbegin(); it != keysOfPanel.cend(); ++it) {
        if (!storedCountsOfPanel(it.key(), erasedAt.value(it.key()).lastPassage, it.value(), counts, error))
            return false;
    }
    return true;
}

bool PassageStore::storedCountsOfPanel(qint32 panel, qint64 after, const QList<RecordKey>& keys,
                                       QHash<RecordKey, int>& counts, QString* error) const
{
    const QString head = u"SELECT \"Kapi ID\", \"Gecis Tipi\", \"Kod\", \"ID\", \"Tarih\" FROM \"AccessDatas\" "
                         u"WHERE \"Panel ID\" = ? AND \"Kayit No\" > ? AND "_s;
    const auto count = [&](QSqlQuery& q) {
        while (q.next()) {
            const RecordKey key{ panel,
                                 q.value(0).toInt(),
                                 directionOf(q.value(1).toInt()),
                                 passageCodeOf(q.value(2).toInt()),
                                 q.value(3).toInt(),
                                 RecordKey::secondOfStored(q.value(4)) };
            ++counts[key];
        }
    };
    if (keys.size() > KeysPerQuery) {
        // A whole download: one read of the panel's rows over the period it covers.
        qint64 firstSecond = keys.first().second;
        qint64 lastSecond = firstSecond;
        for (const RecordKey& key : keys) {
            firstSecond = qMin(firstSecond, key.second);
            lastSecond = qMax(lastSecond, key.second);
        }
        QSqlQuery q = m_db.query(head + u"\"Tarih\" >= ? AND \"Tarih\" <= ?"_s,
                                 { panel, after, m_db.toSql(RecordKey::timeOfSecond(firstSecond)),
                                   m_db.toSql(RecordKey::timeOfSecond(lastSecond)) },
                                 error);
        if (!q.isActive())
            return false;
        count(q);
        return true;
    }
    // A few passages: each (user, second) looked up through the index.
    QString sql = head + u'(';
    QVariantList params{ panel, after };
    for (qsizetype i = 0; i < keys.size(); ++i) {
        if (i)
            sql += u" OR "_s;
        sql += u"(\"ID\" = ? AND \"Tarih\" = ?)"_s;
        params << keys.at(i).userId << m_db.toSql(RecordKey::timeOfSecond(keys.at(i).second));
    }
    sql += u')';
    QSqlQuery q = m_db.query(sql, params, error);
    if (!q.isActive())
        return false;
    count(q);
    return true;
}
