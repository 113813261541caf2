#pragma once

#include <QByteArray>
#include <QDateTime>

// One passage as the panel keeps it in its record memory.
struct SimRecord
{
    int door = 1;
    int localZone = 1;
    int direction = 0; // 0 entry, 1 exit
    int code = 1; // 0 denied, 1 granted, 2 anti-passback, 4 unknown card, 5..10 door events
    int userId = 0;
    qint64 card = 0;
    QDateTime time; // panel time

    bool operator==(const SimRecord& other) const = default;
};
