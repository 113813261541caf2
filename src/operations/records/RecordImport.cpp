#include "operations/records/RecordImport.h"

#include "operations/records/PassageStore.h"

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

    QList<PassageStore::Passage> passages;
    passages.reserve(records.size());
    for (const DownloadedRecord& r : records) {
        PassageStore::Passage p;
        p.panel = panelNumber;
        p.door = r.door;
        p.reportedZone = r.localZone;
        p.userId = r.userId;
        p.cardId = r.cardId;
        p.time = r.time;
        p.direction = r.direction;
        p.code = r.code;
        passages.append(p);
    }
    PassageStore::Options options;
    options.sinceLastErase = true;
    options.progress = progress;
    PassageStore::Outcome outcome;
    if (!PassageStore(m_db).store(passages, options, &outcome, error))
        return false;
    sum.added = static_cast<int>(outcome.stored.size());
    sum.duplicates = outcome.duplicates;
    return true;
}
