#include "store/SchemaDeliveredRows.h"

#include "store/Database.h"

#include <QList>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

struct CodeText
{
    int code;
    QString text;
};

QList<CodeText> eventCodes()
{
    return { { 0, u"Geçiş Reddedildi"_s }, { 1, u"Geçiş Onaylandı"_s },  { 2, u"Antipassback İhlali"_s },
             { 3, u"Zaman Dışı Geçiş"_s }, { 4, u"Tanımsız Kart"_s },    { 5, u"Operatör Tetikleme"_s },
             { 6, u"Operatör Açma"_s },    { 7, u"Operatör Kapatma"_s }, { 8, u"Buton Tetikleme"_s },
             { 9, u"Programlı Açma"_s },   { 10, u"Programlı Kapama"_s } };
}

QList<CodeText> operationCodes()
{
    // Door operation records carry their operation code (the same numbers as the event codes).
    QList<CodeText> list;
    for (const CodeText& c : eventCodes()) {
        if (c.code >= 5)
            list << c;
    }
    return list;
}

QList<CodeText> userTypes()
{
    return { { 0, u"Personel"_s }, { 1, u"Ziyaretçi Kartı"_s } };
}

QList<CodeText> accessModes()
{
    return {
        { 0, u"Sadece Kart"_s }, { 1, u"Sadece Şifre"_s }, { 2, u"Kart ve Şifre"_s }, { 3, u"Kart veya Şifre"_s }
    };
}

// The meaning of each type is the one the panels apply (docs/protocol.md, time group frame).
QList<CodeText> baseRestrictionTypes()
{
    return { { 0, u"Sınırlama Yok"_s },
             { 1, u"İki Tarih Arası Geçiş"_s },
             { 2, u"İki Tarih Arası Yasak"_s },
             { 3, u"İki Saat Arası Geçiş"_s },
             { 4, u"İki Saat Arası Yasak"_s },
             { 5, u"Haftalık Plan"_s },
             { 6, u"Haftalık Plan + Her Gün Ayrı Saat Sınırı"_s },
             { 8, u"Aylık Plan"_s },
             { 9, u"İlave Saat Kontrolü (Her Gün İçin Geçerli)"_s },
             { 13, u"Haftalık Plan + Her Gün Ayrı Saat Sınırı + İlave Saat Kontrolü"_s } };
}

QList<CodeText> extraRestrictionTypes()
{
    return { { 10, u"Çoklu Saat Geçiş - Yemekhane"_s },
             { 11, u"Altılı Saat Geçiş"_s },
             { 12, u"Altılı Saat Yasak"_s } };
}

int insertCodes(Database& db, const QString& table, const QString& key, const QString& name,
                const QList<CodeText>& codes, QString* error)
{
    QList<QVariantList> rows;
    for (const CodeText& c : codes)
        rows << QVariantList{ c.code, c.text };
    if (!db.insertRows(table, { key, name }, rows, error))
        return -1;
    return static_cast<int>(rows.size());
}

bool isEmpty(Database& db, const QString& table)
{
    return db.scalar(u"SELECT count(*) FROM "_s + Database::quoted(table)).toInt() == 0;
}

} // namespace

QStringList SchemaDeliveredRows::tables()
{
    return {
        u"CodeDefinition"_s, u"CodeOperation"_s, u"UserTypes"_s, u"AccessModes"_s, u"TimeZoneIDs"_s, u"ProgInit"_s
    };
}

bool SchemaDeliveredRows::fill(Database& db, QString* error)
{
    for (const QString& table : tables()) {
        if (fillTable(db, table, error) < 0)
            return false;
    }
    return true;
}

int SchemaDeliveredRows::fillTable(Database& db, const QString& table, QString* error)
{
    if (table == u"ProgInit"_s)
        return ensureSettingsRow(db, error);
    // Code tables are only filled while empty: the site may have edited its texts.
    if (!tables().contains(table) || !isEmpty(db, table))
        return 0;
    if (table == u"CodeDefinition"_s)
        return insertCodes(db, table, u"TKod"_s, u"Operasyon"_s, eventCodes(), error);
    if (table == u"CodeOperation"_s)
        return insertCodes(db, table, u"TKod"_s, u"Operasyon"_s, operationCodes(), error);
    if (table == u"UserTypes"_s)
        return insertCodes(db, table, u"Kullanici Tipi"_s, u"Adi"_s, userTypes(), error);
    if (table == u"AccessModes"_s)
        return insertCodes(db, table, u"Gecis Modu"_s, u"Adi"_s, accessModes(), error);
    // TimeZoneIDs
    const int base = insertCodes(db, table, u"Gecis Sinirlama Tipi"_s, u"Adi"_s, baseRestrictionTypes(), error);
    if (base < 0)
        return -1;
    const int extra = addExtraRestrictionTypes(db, error);
    return extra < 0 ? -1 : base + extra;
}

int SchemaDeliveredRows::addExtraRestrictionTypes(Database& db, QString* error)
{
    QString queryError;
    const QVariant found
        = db.scalar(u"SELECT count(*) FROM \"TimeZoneIDs\" WHERE \"Gecis Sinirlama Tipi\" = ?"_s, { 10 }, &queryError);
    if (!found.isValid()) {
        if (error)
            *error = queryError;
        return -1;
    }
    if (found.toInt() > 0)
        return 0;
    return insertCodes(db, u"TimeZoneIDs"_s, u"Gecis Sinirlama Tipi"_s, u"Adi"_s, extraRestrictionTypes(), error);
}

int SchemaDeliveredRows::ensureSettingsRow(Database& db, QString* error)
{
    QString queryError;
    const QVariant count = db.scalar(u"SELECT count(*) FROM \"ProgInit\""_s, {}, &queryError);
    if (!count.isValid()) {
        if (error)
            *error = queryError;
        return -1;
    }
    if (count.toInt() > 0)
        return 0;
    // No administrator password: the start-up asks the operator to choose one.
    return db.exec(u"INSERT INTO \"ProgInit\" (\"AdminPassword\") VALUES (NULL)"_s, {}, error) ? 1 : -1;
}
