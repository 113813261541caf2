#pragma once

#include <QDateTime>
#include <QHash>
#include <QVariant>

// What makes two passages of one panel the same: the user (or operation) number and the second
// they happened at. The time is taken field by field, so no time zone can shift it.
struct RecordKey
{
    qint32 panel = 0;
    qint32 userId = 0;
    qint64 second = 0;

    static RecordKey of(qint32 panel, qint32 userId, const QDateTime& time);
    // The same from a date-time column as the database returns it (text on SQLite), without the
    // cost of a full date-time parse for every row.
    static RecordKey ofStored(qint32 panel, qint32 userId, const QVariant& stored);
    bool operator==(const RecordKey&) const = default;
};

size_t qHash(const RecordKey& key, size_t seed = 0);
