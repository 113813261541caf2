#include "operations/records/PassageHistory.h"

#include "operations/users/PersonName.h"
#include "store/Database.h"

#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {
// The names joined to a passage, under names of their own so that they are read by name too.
const QString kFirst = u"Kisi Adi"_s;
const QString kLast = u"Kisi Soyadi"_s;
const QString kVisitorFirst = u"Ziyaretci Adi"_s;
const QString kVisitorLast = u"Ziyaretci Soyadi"_s;

QString selected(const QString& table, const QString& column, const QString& as)
{
    return table + u'.' + Database::quoted(column) + u" AS "_s + Database::quoted(as);
}
} // namespace

PassageHistory::PassageHistory(const Database& db)
    : m_db(db)
{ }

QList<PassageHistory::Entry> PassageHistory::page(qint64 before, int count, QString* error) const
{
    QStringList columns;
    for (const QString& column : RecordRow::storedColumns())
        columns << selected(u"a"_s, column, column);
    columns << selected(u"u"_s, u"Adi"_s, kFirst) << selected(u"u"_s, u"Soyadi"_s, kLast)
            << selected(u"v"_s, u"Adi"_s, kVisitorFirst) << selected(u"v"_s, u"Soyadi"_s, kVisitorLast);
    // A door operation record carries an operation code where a person's number would be, so it
    // is not matched with Users or Visitors.
    QString sql = u"SELECT "_s + columns.join(u", "_s)
        + u" FROM \"AccessDatas\" a "
          u"LEFT JOIN \"Users\" u ON u.\"ID\" = a.\"ID\" AND a.\"Kod\" < 5 "
          u"LEFT JOIN \"Visitors\" v ON v.\"Kayit No\" = a.\"Visitor No\" AND a.\"Kod\" < 5 "_s;
    QVariantList params;
    if (before > 0) {
        sql += u"WHERE a.\"Kayit No\" < ? "_s;
        params << before;
    }
    sql += u"ORDER BY a.\"Kayit No\" DESC LIMIT ?"_s;
    params << count;

    QList<Entry> entries;
    QSqlQuery q = m_db.query(sql, params, error);
    while (q.next()) {
        const QSqlRecord fields = q.record();
        const bool visitorFound = !fields.isNull(kVisitorFirst) || !fields.isNull(kVisitorLast);
        const QString name = visitorFound
            ? PersonName::join(fields.value(kVisitorFirst).toString(), fields.value(kVisitorLast).toString())
            : PersonName::join(fields.value(kFirst).toString(), fields.value(kLast).toString());
        entries << Entry{ RecordRow::read(fields), name };
    }
    return entries;
}
