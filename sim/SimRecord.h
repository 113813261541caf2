#pragma once

#include "protocol/Direction.h"
#include "protocol/PassageCode.h"

#include <QByteArray>
#include <QDateTime>

// One passage as the panel keeps it in its record memory.
struct SimRecord
{
    int door = 1;
    int localZone = 1;
    Direction direction = Direction::Entry;
    PassageCode code = PassageCode::Granted;
    int userId = 0;
    qint64 card = 0;
    QDateTime time; // panel time

    bool operator==(const SimRecord& other) const = default;
};
