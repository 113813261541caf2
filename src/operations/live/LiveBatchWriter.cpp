#include "operations/live/LiveBatchWriter.h"

#include "operations/records/PassageStore.h"

namespace {

// Seconds of passages kept in memory behind the newest one once the memory is full.
constexpr qint64 RememberSeconds = 3600;

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

    QList<PassageStore::Passage> passages;
    passages.reserve(events.size());
    for (const CardEvent& e : events) {
        PassageStore::Passage p;
        p.panel = e.panelNumber;
        p.door = e.door;
        p.userId = e.userId;
        p.cardId = e.cardId;
        p.time = e.time;
        p.direction = e.direction;
        p.code = e.code;
        passages.append(p);
    }
    PassageStore::Options options;
    options.handedInBefore = &m_seen;
    PassageStore::Outcome stored;
    if (!PassageStore(m_db).store(passages, options, &stored, error))
        return false;
    // Taken over only once the batch is committed, so a failed batch can come again unchanged.
    for (auto it = stored.handedIn.cbegin(); it != stored.handedIn.cend(); ++it) {
        m_seen[it.key()] += it.value();
        m_newestSecond = qMax(m_newestSecond, it.key().second);
    }
    forgetOld();
    out.stored = stored.stored;
    out.duplicates = stored.duplicates;
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
