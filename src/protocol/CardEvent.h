#pragma once

#include <QDateTime>

// One passage pushed live by a panel ("%CD").
struct CardEvent
{
    qint32 panelNumber = 0;
    qint32 door = 0;
    qint32 code = 0; // the stored event code: 0 denied, 1 granted, 2 anti-passback, 4 unknown card
    qint32 directionDigit = 0; // as sent: 1 means entry
    qint32 passageType = 0; // as stored: 0 entry, 1 exit
    qint32 userId = 0;
    qint64 cardId = 0;
    QDateTime time;
};
