#include "store/CodeTable.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

CodeTable::CodeTable(Kind kind)
    : m_kind(kind)
{ }

QString CodeTable::tableName() const
{
    switch (m_kind) {
    case Kind::UserTypes:
        return u"UserTypes"_s;
    case Kind::PassageModes:
        return u"AccessModes"_s;
    case Kind::EventCodes:
        return u"CodeDefinition"_s;
    case Kind::RestrictionTypes:
        return u"TimeZoneIDs"_s;
    }
    return {};
}

QString CodeTable::codeColumn() const
{
    switch (m_kind) {
    case Kind::UserTypes:
        return u"Kullanici Tipi"_s;
    case Kind::PassageModes:
        return u"Gecis Modu"_s;
    case Kind::EventCodes:
        return u"TKod"_s;
    case Kind::RestrictionTypes:
        return u"Gecis Sinirlama Tipi"_s;
    }
    return {};
}

QString CodeTable::nameColumn() const
{
    return m_kind == Kind::EventCodes ? u"Operasyon"_s : u"Adi"_s;
}

QList<CodeTable::Row> CodeTable::rows(const Database& db, QString* error) const
{
    QList<Row> result;
    const QString sql = u"SELECT "_s + Database::quotedList({ codeColumn(), nameColumn() }) + u" FROM "_s
        + Database::quoted(tableName()) + u" ORDER BY "_s + Database::quoted(codeColumn());
    for (const QVariantList& row : db.rows(sql, {}, error))
        result << Row{ row.value(0).toInt(), row.value(1).toString() };
    return result;
}
