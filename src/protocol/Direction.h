#pragma once

#include <QtGlobal>

// Which way a passage went ("Gecis Tipi"). A stored record's direction digit is kept as the panel
// sent it, so numbers not named here may occur.
enum class Direction : qint32
{
    Entry = 0,
    Exit = 1,
};

// The number as stored records carry it and AccessDatas stores it, and back.
qint32 storedNumber(Direction direction);
Direction directionOf(qint32 number);

// The direction digit of a live passage frame turns the numbers around: 1 is an entry, any other
// digit an exit.
Direction directionOfLiveDigit(qint32 digit);
