#include "operations/users/UserIdRange.h"

namespace {

const QString kWrongBounds = QStringLiteral("İlk ID veya Son ID değerleri hatalı! Lütfen kontrol ediniz!");
const QString kLimits = QStringLiteral(
    "İlk ID ve Son ID değerleri 20.000'den büyük olamaz. İlk ID değeri Son ID değerinden küçük olmalıdır.");

} // namespace

UserIdRange UserIdRange::fromText(const QString& first, const QString& last)
{
    bool okFirst = false;
    bool okLast = false;
    UserIdRange range;
    range.first = first.trimmed().toInt(&okFirst);
    range.last = last.trimmed().toInt(&okLast);
    range.given = okFirst && okLast;
    return range;
}

UserIdRange UserIdRange::of(qint32 first, qint32 last)
{
    return UserIdRange{ first, last, true };
}

bool UserIdRange::isValid() const
{
    return given && first >= MinId && last >= MinId && first <= MaxId && last <= MaxId && first <= last;
}

Message UserIdRange::sendRefusal()
{
    Message m(QStringLiteral("Sınırlı kullanıcı gönderme işlemini seçtiniz."));
    m.value(QStringLiteral(" ")).add(QStringLiteral("Ancak")).value(QStringLiteral(", ")).add(kWrongBounds);
    m.value(QStringLiteral("\n ")).add(kLimits);
    return m;
}

Message UserIdRange::receiveRefusal()
{
    return Message(kWrongBounds).newLine().add(kLimits);
}
