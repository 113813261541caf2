#pragma once

#include "protocol/Direction.h"
#include "protocol/PassageCode.h"

#include <QDateTime>

// One stored passage read from a panel's memory, decoded.
struct DownloadedRecord
{
    qint32 door = 0;
    qint32 localZone = 0;
    Direction direction = Direction::Entry; // the digit as the panel sent it
    PassageCode code = PassageCode::Denied;
    qint32 userId = 0;
    qint64 cardId = 0;
    QDateTime time;
};
