#pragma once

#include "operations/records/RecordKey.h"
#include "operations/records/RecordRow.h"
#include "protocol/CardEvent.h"

#include <QHash>
#include <QList>
#include <QString>

class Database;

// Stores a batch of live passages through the passage store and returns the rows with their
// "Kayit No". A passage is skipped when the offline import or the back-fill stored it already:
// the monitor's own earlier passages count towards the store's n, so a real repeat is kept.
class LiveBatchWriter
{
public:
    struct Outcome
    {
        QList<RecordRow> stored;
        int duplicates = 0;
    };

    explicit LiveBatchWriter(Database& db);

    // All or nothing; on failure the batch may be offered again unchanged.
    bool store(const QList<CardEvent>& events, Outcome* outcome, QString* error = nullptr);

    // Passages of one key remembered at most; older seconds are forgotten first.
    static constexpr int MaxRemembered = 100000;

private:
    void forgetOld();

    Database& m_db;
    // How many passages of each key this monitor has received (stored or recognised).
    QHash<RecordKey, int> m_seen;
    qint64 m_newestSecond = 0;
};
