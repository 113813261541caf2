#include "operations/records/RecordKey.h"

#include "store/Database.h"

RecordKey RecordKey::of(qint32 panel, qint32 door, Direction direction, PassageCode code, qint32 userId,
                        const QDateTime& time)
{
    return RecordKey{ panel, door, direction, code, userId, secondOf(time) };
}

qint64 RecordKey::secondOf(const QDateTime& time)
{
    return time.date().toJulianDay() * 86400 + time.time().msecsSinceStartOfDay() / 1000;
}

qint64 RecordKey::secondOfStored(const QVariant& stored)
{
    if (stored.metaType().id() == QMetaType::QString) {
        // "yyyy-MM-dd HH:mm:ss", read digit by digit.
        const QString text = stored.toString();
        const auto digits = [&text](int from, int count) {
            int value = 0;
            for (int i = from; i < from + count; ++i) {
                const QChar c = text.at(i);
                if (!c.isDigit())
                    return -1;
                value = value * 10 + c.digitValue();
            }
            return value;
        };
        if (text.size() >= 19) {
            const int y = digits(0, 4), mo = digits(5, 2), d = digits(8, 2);
            const int h = digits(11, 2), mi = digits(14, 2), s = digits(17, 2);
            const QDate date(y, mo, d);
            if (date.isValid() && h >= 0 && mi >= 0 && s >= 0)
                return date.toJulianDay() * 86400 + h * 3600 + mi * 60 + s;
        }
    }
    return secondOf(Database::dateTime(stored));
}

QDateTime RecordKey::timeOfSecond(qint64 second)
{
    return QDateTime(QDate::fromJulianDay(second / 86400), QTime(0, 0).addSecs(static_cast<int>(second % 86400)));
}

size_t qHash(const RecordKey& key, size_t seed)
{
    return qHashMulti(seed, key.panel, key.door, storedNumber(key.direction), storedNumber(key.code), key.userId,
                      key.second);
}
