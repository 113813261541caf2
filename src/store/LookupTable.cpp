#include "store/LookupTable.h"

#include "store/Database.h"
#include "store/Transaction.h"

using namespace Qt::StringLiterals;

LookupTable::LookupTable(Kind kind)
    : m_kind(kind)
{ }

QString LookupTable::tableName() const
{
    switch (m_kind) {
    case Kind::Companies:
        return u"Sirketler"_s;
    case Kind::Departments:
        return u"Departmanlar"_s;
    case Kind::Blocks:
        return u"Bloklar"_s;
    }
    return {};
}

QString LookupTable::keyColumn() const
{
    switch (m_kind) {
    case Kind::Companies:
        return u"Sirket No"_s;
    case Kind::Departments:
        return u"Departman No"_s;
    case Kind::Blocks:
        return u"Blok No"_s;
    }
    return {};
}

QString LookupTable::nameColumn() const
{
    return u"Adi"_s;
}

QString LookupTable::formTitle() const
{
    switch (m_kind) {
    case Kind::Companies:
        return u"Şirket Girişleri"_s;
    case Kind::Departments:
        return u"Departman Girişleri"_s;
    case Kind::Blocks:
        return u"Blok Girişleri"_s;
    }
    return {};
}

QString LookupTable::formName() const
{
    return u"frm"_s + tableName();
}

QList<LookupTable::Row> LookupTable::rows(const Database& db, QString* error) const
{
    QList<Row> result;
    const QString sql = u"SELECT "_s + Database::quoted(keyColumn()) + u", "_s + Database::quoted(nameColumn())
        + u" FROM "_s + Database::quoted(tableName()) + u" ORDER BY "_s + Database::quoted(keyColumn());
    for (const QVariantList& row : db.rows(sql, {}, error))
        result << Row{ row.at(0).toInt(), row.at(1).toString() };
    return result;
}

int LookupTable::nextFreeKey(const Database& db) const
{
    const QVariant max
        = db.scalar(u"SELECT max("_s + Database::quoted(keyColumn()) + u") FROM "_s + Database::quoted(tableName()));
    return max.isNull() ? 1 : max.toInt() + 1;
}

LookupTable::Result LookupTable::failed(bool duplicate, const QString& error) const
{
    Result r;
    r.error = error;
    r.message = duplicate ? Message(u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s)
                          : Message(u"Hata, İşlem tamamlanamadı!"_s);
    return r;
}

LookupTable::Result LookupTable::add(Database& db, const QString& name, int key) const
{
    if (key < 0)
        return { false, 0, Message(u"Hata, İşlem tamamlanamadı!"_s), u"negative number"_s };
    QString error;
    bool duplicate = false;
    // Two stations numbering at the same moment: the loser of the race tries the next number once.
    for (int attempt = 0; attempt < 2; ++attempt) {
        Transaction tx(db);
        if (!tx.isActive())
            return failed(false, tx.error());
        const int number = key > 0 ? key : nextFreeKey(db);
        if (db.insert(tableName(), { keyColumn(), nameColumn() }, { number, name }, &error) && tx.commit(&error))
            return { true, number, {}, {} };
        duplicate = db.lastErrorWasUniqueViolation();
        if (key > 0 || !duplicate)
            break;
    }
    return failed(duplicate, error);
}

LookupTable::Result LookupTable::update(Database& db, int oldKey, int newKey, const QString& name) const
{
    QString error;
    const int changed = db.execCount(u"UPDATE "_s + Database::quoted(tableName()) + u" SET "_s
                                         + Database::quoted(keyColumn()) + u" = ?, "_s + Database::quoted(nameColumn())
                                         + u" = ? WHERE "_s + Database::quoted(keyColumn()) + u" = ?"_s,
                                     { newKey, name, oldKey }, &error);
    if (changed < 0)
        return failed(db.lastErrorWasUniqueViolation(), error);
    if (changed == 0)
        return { false, oldKey, Message(u"Hata, İşlem tamamlanamadı!"_s), u"no such row"_s };
    return { true, newKey, {}, {} };
}

LookupTable::Result LookupTable::remove(Database& db, int key) const
{
    QString error;
    const int changed = db.execCount(u"DELETE FROM "_s + Database::quoted(tableName()) + u" WHERE "_s
                                         + Database::quoted(keyColumn()) + u" = ?"_s,
                                     { key }, &error);
    if (changed < 0)
        return failed(db.lastErrorWasUniqueViolation(), error);
    if (changed == 0)
        return { false, key, Message(u"Hata, İşlem tamamlanamadı!"_s), u"no such row"_s };
    return { true, key, {}, {} };
}

int LookupTable::rowAfterDelete(int deletedRow, int rowsLeft)
{
    if (rowsLeft <= 0)
        return -1;
    return qBound(0, deletedRow, rowsLeft - 1);
}
