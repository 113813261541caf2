#include "protocol/UserType.h"

qint32 storedNumber(UserType type)
{
    return static_cast<qint32>(type);
}

UserType userTypeOf(qint32 number)
{
    return static_cast<UserType>(number);
}
