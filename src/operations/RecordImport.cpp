#include "operations/RecordImport.h"

#include "operations/RecordKey.h"
#include "operations/RecordLookup.h"
#include "operations/RecordRow.h"
#include "operations/RecordWriteLock.h"
#include "store/Database.h"
#include "store/Transaction.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int ProgressStep = 1000;

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

} // namespace

RecordImport::RecordImport(Database& db)
    : m_db(db)
{ }

bool RecordImport::store(qint32 panelNumber, const QList<DownloadedRecord>& records, Summary* summary, QString* error,
                         const Progress& progress)
{
    Summary local;
    Summary& sum = summary ? *summary : local;
    sum = Summary();
    sum.records = static_cast<int>(records.size());
    if (records.isEmpty())
        return true;

    QDateTime first = records.first().time;
    QDateTime last = first;
    QSet<qint64> cards;
    for (const DownloadedRecord& r : records) {
        first = qMin(first, r.time);
        last = qMax(last, r.time);
        cards.insert(r.cardId);
    }

    RecordWriteLock lock;
    Transaction transaction(m_db);
    QString why;
    if (!transaction.isActive()) {
        setError(error, transaction.error());
        return false;
    }
    if (!lock.acquire(m_db, &why)) {
        setError(error, why);
        return false;
    }

    // How many rows of each (user, second) the panel has stored in the downloaded period.
    QHash<RecordKey, int> stored;
    {
        QSqlQuery q = m_db.query(u"SELECT \"ID\", \"Tarih\" FROM \"AccessDatas\" "
                                 u"WHERE \"Panel ID\" = ? AND \"Tarih\" >= ? AND \"Tarih\" <= ?"_s,
                                 { panelNumber, m_db.toSql(first), m_db.toSql(last) }, &why);
        if (!q.isActive()) {
            setError(error, why);
            return false;
        }
        while (q.next())
            ++stored[RecordKey::ofStored(panelNumber, q.value(0).toInt(), q.value(1))];
    }

    RecordLookup lookup(m_db);
    if (!lookup.loadUserTypes(cards, &why) || !lookup.loadVisits(cards, first.date(), last.date(), &why)
        || !lookup.loadZones(&why)) {
        setError(error, why);
        return false;
    }

    QList<QVariantList> rows;
    rows.reserve(records.size());
    const int total = sum.records;
    for (int i = 0; i < total; ++i) {
        const DownloadedRecord& r = records.at(i);
        const RecordKey key = RecordKey::of(panelNumber, r.userId, r.time);
        auto it = stored.find(key);
        if (it != stored.end() && *it > 0) {
            --*it; // this stored row is the record's copy; a further equal record is new
            ++sum.duplicates;
            continue;
        }
        RecordRow row;
        row.panelId = panelNumber;
        row.localZone = r.localZone;
        row.globalZone = lookup.offlineGlobalZone(panelNumber, r.localZone);
        row.door = r.door;
        row.userId = r.userId;
        row.cardId = r.cardId;
        row.time = r.time;
        row.passageType = r.passageType;
        row.code = r.code;
        row.userType = lookup.userType(r.cardId);
        row.visitorNo = lookup.visitorNo(r.cardId, r.time);
        rows.append(row.values(m_db));
        if (progress && (i + 1) % ProgressStep == 0)
            progress(i + 1, total);
    }
    if (!rows.isEmpty() && !m_db.insertRows(u"AccessDatas"_s, RecordRow::columns(), rows, &why)) {
        setError(error, why);
        return false;
    }
    if (!transaction.commit(&why)) {
        setError(error, why);
        return false;
    }
    sum.added = static_cast<int>(rows.size());
    if (progress)
        progress(total, total);
    return true;
}
