#pragma once

#include "store/Message.h"

#include <QString>

// A range of panel user IDs as typed into the two range boxes. Valid when both bounds are given,
// both lie in 1..20000 and the first is not above the last.
struct UserIdRange
{
    static constexpr qint32 MinId = 1;
    static constexpr qint32 MaxId = 20000;

    qint32 first = 0;
    qint32 last = 0;
    bool given = false; // both boxes held whole numbers

    static UserIdRange fromText(const QString& first, const QString& last);
    static UserIdRange of(qint32 first, qint32 last);
    bool isValid() const;

    // The refusal of the send: "Sınırlı kullanıcı gönderme işlemini seçtiniz. Ancak, İlk ID ...".
    static Message sendRefusal();
    // The refusal of the receive: "İlk ID veya Son ID değerleri hatalı! ..." and the limits.
    static Message receiveRefusal();
};
