#pragma once

#include "protocol/Direction.h"
#include "protocol/PassageCode.h"

#include <QDateTime>

// One passage pushed live by a panel ("%CD").
struct CardEvent
{
    qint32 panelNumber = 0;
    qint32 door = 0;
    PassageCode code = PassageCode::Denied;
    Direction direction = Direction::Entry;
    qint32 userId = 0;
    qint64 cardId = 0;
    QDateTime time;
};
