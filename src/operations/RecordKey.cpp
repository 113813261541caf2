#include "operations/RecordKey.h"

RecordKey RecordKey::of(qint32 panel, qint32 userId, const QDateTime& time)
{
    const qint64 day = time.date().toJulianDay();
    return RecordKey{ panel, userId, day * 86400 + time.time().msecsSinceStartOfDay() / 1000 };
}

size_t qHash(const RecordKey& key, size_t seed)
{
    return qHashMulti(seed, key.panel, key.userId, key.second);
}
