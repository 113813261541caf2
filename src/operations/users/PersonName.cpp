#include "operations/users/PersonName.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

QString PersonName::join(const QString& first, const QString& last)
{
    return QString(first.trimmed() + u' ' + last.trimmed()).trimmed();
}

QHash<qint64, QString> PersonName::namesByKey(const Database& db, const QString& table, const QString& keyColumn,
                                              const QList<qint64>& keys, QString* error)
{
    QHash<qint64, QString> names;
    if (keys.isEmpty())
        return names;
    QVariantList params;
    params.reserve(keys.size());
    for (qint64 key : keys)
        params << key;
    const QString sql = u"SELECT "_s + Database::quotedList({ keyColumn, u"Adi"_s, u"Soyadi"_s }) + u" FROM "_s
        + Database::quoted(table) + u" WHERE "_s + Database::quoted(keyColumn) + u" IN ("_s
        + Database::placeholders(params.size()) + u')';
    for (const QVariantList& row : db.rows(sql, params, error))
        names.insert(row.value(0).toLongLong(), join(row.value(1).toString(), row.value(2).toString()));
    return names;
}
