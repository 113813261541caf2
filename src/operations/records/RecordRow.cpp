#include "operations/records/RecordRow.h"

#include "store/Database.h"

#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {
// The columns of AccessDatas a passage is written to and read back from.
const QString kRecordNo = u"Kayit No"_s;
const QString kPanel = u"Panel ID"_s;
const QString kLocalZone = u"Lokal Bolge No"_s;
const QString kGlobalZone = u"Global Bolge No"_s;
const QString kDoor = u"Kapi ID"_s;
const QString kUser = u"ID"_s;
const QString kCard = u"Kart ID"_s;
const QString kTime = u"Tarih"_s;
const QString kPassageType = u"Gecis Tipi"_s;
const QString kCode = u"Kod"_s;
const QString kUserType = u"Kullanici Tipi"_s;
const QString kVisitorNo = u"Visitor No"_s;

template <typename T> std::optional<T> optionalOf(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    return value.value<T>();
}
} // namespace

QStringList RecordRow::columns()
{
    return { kPanel, kLocalZone, kGlobalZone, kDoor, kUser, kCard, kTime, kPassageType, kCode, kUserType, kVisitorNo };
}

QStringList RecordRow::storedColumns()
{
    return QStringList{ kRecordNo } + columns();
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

RecordRow RecordRow::read(const QSqlRecord& fields)
{
    RecordRow r;
    r.recordNo = fields.value(kRecordNo).toLongLong();
    r.panelId = fields.value(kPanel).toInt();
    r.localZone = fields.value(kLocalZone).toInt();
    r.globalZone = fields.value(kGlobalZone).toInt();
    r.door = fields.value(kDoor).toInt();
    r.userId = fields.value(kUser).toInt();
    r.cardId = fields.value(kCard).toLongLong();
    r.time = Database::dateTime(fields.value(kTime));
    r.direction = directionOf(fields.value(kPassageType).toInt());
    r.code = passageCodeOf(fields.value(kCode).toInt());
    if (const auto type = optionalOf<qint32>(fields.value(kUserType)))
        r.userType = userTypeOf(*type);
    r.visitorNo = optionalOf<qint64>(fields.value(kVisitorNo));
    return r;
}
