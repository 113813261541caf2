#pragma once

#include <QtGlobal>

// What a card holder is ("Kullanici Tipi"). Numbers not named here are kept as they are stored.
enum class UserType : qint32
{
    Personnel = 0,
    VisitorCard = 1,
};

// The number as Users and AccessDatas store it, and back.
qint32 storedNumber(UserType type);
UserType userTypeOf(qint32 number);
