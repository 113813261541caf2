#include "store/Whereabouts.h"

#include "store/Database.h"
#include "store/Transaction.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

const QStringList kColumns{ u"ID"_s,      u"Global Bolge No"_s, u"Panel ID"_s,   u"Kayit No"_s,
                            u"Kart ID"_s, u"Kapi ID"_s,         u"Gecis Tipi"_s, u"Tarih"_s };
constexpr int RowsPerStatement = 400;

struct Key
{
    qint32 userId;
    qint32 zone;
    qint32 panel;
    bool operator==(const Key&) const = default;
};

size_t qHash(const Key& k, size_t seed = 0)
{
    return qHashMulti(seed, k.userId, k.zone, k.panel);
}

bool later(const Whereabouts::Passage& a, const Whereabouts::Passage& b)
{
    if (a.time != b.time)
        return a.time > b.time;
    return a.recordNo > b.recordNo;
}

} // namespace

QString Whereabouts::table()
{
    return u"Whereabouts"_s;
}

bool Whereabouts::record(Database& db, const QList<Passage>& passages, QString* error)
{
    // One row per key from this batch: the engine may touch a row only once per statement.
    QHash<Key, Passage> latest;
    for (const Passage& p : passages) {
        const Key key{ p.userId, p.globalZone, p.panel };
        auto it = latest.find(key);
        if (it == latest.end())
            latest.insert(key, p);
        else if (later(p, *it))
            *it = p;
    }
    if (latest.isEmpty())
        return true;

    const QString head = u"INSERT INTO \"Whereabouts\" ("_s + Database::quotedList(kColumns) + u") VALUES "_s;
    // Replaces the stored row only with a later passage: a download of old records after a newer
    // live passage leaves the newer one in place.
    const QString tail = u" ON CONFLICT (\"ID\", \"Global Bolge No\", \"Panel ID\") DO UPDATE SET"
                         u" \"Kayit No\" = excluded.\"Kayit No\", \"Kart ID\" = excluded.\"Kart ID\","
                         u" \"Kapi ID\" = excluded.\"Kapi ID\", \"Gecis Tipi\" = excluded.\"Gecis Tipi\","
                         u" \"Tarih\" = excluded.\"Tarih\""
                         u" WHERE excluded.\"Tarih\" > \"Whereabouts\".\"Tarih\" OR (excluded.\"Tarih\" ="
                         u" \"Whereabouts\".\"Tarih\" AND excluded.\"Kayit No\" > \"Whereabouts\".\"Kayit No\")"_s;
    const QString row = u'(' + Database::placeholders(kColumns.size()) + u')';
    const QList<Passage> rows = latest.values();
    for (qsizetype start = 0; start < rows.size(); start += RowsPerStatement) {
        const qsizetype count = qMin<qsizetype>(RowsPerStatement, rows.size() - start);
        QString sql = head;
        QVariantList params;
        params.reserve(count * kColumns.size());
        for (qsizetype i = 0; i < count; ++i) {
            const Passage& p = rows.at(start + i);
            if (i)
                sql += u',';
            sql += row;
            params << p.userId << p.globalZone << p.panel << p.recordNo << p.cardId << p.door << p.direction
                   << db.toSql(p.time);
        }
        if (!db.exec(sql + tail, params, error))
            return false;
    }
    return true;
}

qint64 Whereabouts::rebuild(Database& db, QString* error)
{
    Transaction transaction(db);
    if (!transaction.isActive()) {
        if (error)
            *error = transaction.error();
        return -1;
    }
    const QString columns = Database::quotedList(kColumns);
    const QString latest = u"SELECT "_s + columns
        + u" FROM (SELECT a.\"ID\", a.\"Global Bolge No\", a.\"Panel ID\", a.\"Kayit No\","
          u" a.\"Kart ID\", a.\"Kapi ID\", a.\"Gecis Tipi\", a.\"Tarih\", ROW_NUMBER() OVER (PARTITION BY a.\"ID\","
          u" a.\"Global Bolge No\", a.\"Panel ID\" ORDER BY a.\"Tarih\" DESC, a.\"Kayit No\" DESC) AS rn"
          u" FROM \"AccessDatas\" a WHERE a.\"Kullanici Tipi\" = 0 AND a.\"Kod\" = 1) t WHERE t.rn = 1"_s;
    if (!db.exec(u"DELETE FROM \"Whereabouts\""_s, {}, error))
        return -1;
    const int made = db.execCount(u"INSERT INTO \"Whereabouts\" ("_s + columns + u") "_s + latest, {}, error);
    // The planner learns the new size at once rather than at the server's next look.
    if (made < 0 || (db.isPostgreSQL() && !db.exec(u"ANALYZE \"Whereabouts\""_s, {}, error))
        || !transaction.commit(error))
        return -1;
    return made;
}

bool Whereabouts::forgetBefore(Database& db, const QDateTime& cutoff, QString* error)
{
    // A row older than the cutoff was the latest of its key, so every passage of that key is gone.
    return db.exec(u"DELETE FROM \"Whereabouts\" WHERE \"Tarih\" < ?"_s, { db.toSql(cutoff) }, error);
}
