#include "protocol/Direction.h"

qint32 storedNumber(Direction direction)
{
    return static_cast<qint32>(direction);
}

Direction directionOf(qint32 number)
{
    return static_cast<Direction>(number);
}

Direction directionOfLiveDigit(qint32 digit)
{
    return digit == 1 ? Direction::Entry : Direction::Exit;
}
