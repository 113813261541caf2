#include "operations/RecordRow.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

QStringList RecordRow::columns()
{
    return { u"Panel ID"_s, u"Lokal Bolge No"_s, u"Global Bolge No"_s, u"Kapi ID"_s,
             u"ID"_s,       u"Kart ID"_s,        u"Tarih"_s,           u"Gecis Tipi"_s,
             u"Kod"_s,      u"Kullanici Tipi"_s, u"Visitor No"_s };
}

QVariantList RecordRow::values(const Database& db) const
{
    return { panelId,
             localZone,
             globalZone,
             door,
             userId,
             cardId,
             db.toSql(time),
             storedNumber(direction),
             storedNumber(code),
             userType ? QVariant(storedNumber(*userType)) : QVariant(),
             visitorNo ? QVariant(*visitorNo) : QVariant() };
}
