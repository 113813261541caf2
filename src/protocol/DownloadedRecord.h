#pragma once

#include <QDateTime>

// One stored passage read from a panel's memory, decoded.
struct DownloadedRecord
{
    qint32 door = 0;
    qint32 localZone = 0;
    qint32 passageType = 0; // 0 entry, 1 exit
    qint32 code = 0;
    qint32 userId = 0;
    qint64 cardId = 0;
    QDateTime time;
};
