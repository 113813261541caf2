#pragma once

#include "protocol/Direction.h"
#include "protocol/PassageCode.h"

#include <QDateTime>
#include <QHash>
#include <QVariant>

// What makes two passages of one panel the same: every field the panel reports with it (door,
// direction, event code, the user or operation number and the second it happened at). The local
// zone is left out: it follows from the door, and a changed zone setting must not make an old
// passage look new. The time is taken field by field, so no time zone can shift it.
struct RecordKey
{
    qint32 panel = 0;
    qint32 door = 0;
    Direction direction = Direction::Entry;
    PassageCode code = PassageCode::Denied;
    qint32 userId = 0;
    qint64 second = 0;

    static RecordKey of(qint32 panel, qint32 door, Direction direction, PassageCode code, qint32 userId,
                        const QDateTime& time);
    // Whole seconds since the start of the Julian calendar, read field by field.
    static qint64 secondOf(const QDateTime& time);
    // The same from a date-time column as the database returns it (text on SQLite), without the
    // cost of a full date-time parse for every row.
    static qint64 secondOfStored(const QVariant& stored);
    // The second back as a date-time.
    static QDateTime timeOfSecond(qint64 second);
    bool operator==(const RecordKey&) const = default;
};

size_t qHash(const RecordKey& key, size_t seed = 0);
