#include "operations/users/CardRefusal.h"

using namespace Qt::StringLiterals;

Message cardRefusal(qint32 userId)
{
    return Message().value(userId).add(u" nolu kullanıcı panele gönderilemez, Kart ID hatalı!"_s);
}
