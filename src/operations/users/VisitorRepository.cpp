#include "operations/users/VisitorRepository.h"

#include "operations/users/PersonName.h"
#include "store/Database.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace {

const QStringList kColumns
    = { u"User ID"_s, u"Kart ID"_s,        u"Adi"_s,     u"Soyadi"_s, u"TCKimlik"_s, u"Plaka"_s, u"Tarih"_s,
        u"Saat"_s,    u"Ziyaret Sebebi"_s, u"Grup No"_s, u"ID"_s };

QString selectSql()
{
    return u"SELECT "_s + Database::quotedList(QStringList{ u"Kayit No"_s } + kColumns) + u" FROM \"Visitors\" "_s;
}

VisitRow readRow(const QSqlQuery& q)
{
    VisitRow v;
    v.visitNo = q.value(0).toLongLong();
    v.cardUserId = q.value(1).toInt();
    v.cardId = q.value(2).toLongLong();
    v.name = q.value(3).toString();
    v.surname = q.value(4).toString();
    v.identityNo = q.value(5).toString();
    v.plate = q.value(6).toString();
    const QDateTime date = Database::dateTime(q.value(7));
    v.date = date.isValid() ? date.date() : QDate();
    const QDateTime time = Database::dateTime(q.value(8));
    v.time = time.isValid() ? time.time() : QTime();
    v.reason = q.value(9).toString();
    v.groupNo = q.value(10).toInt();
    v.visitedId = q.value(11).toInt();
    return v;
}

void setError(Message* error, const Message& message)
{
    if (error)
        *error = message;
}

} // namespace

VisitorRepository::VisitorRepository(const Database& db)
    : m_db(db)
{ }

bool VisitorRepository::registerVisit(VisitRow& visit, Message* error)
{
    const QVariant card = m_db.scalar(u"SELECT "_s + Database::quoted(u"Kart ID"_s) + u" FROM \"Users\" WHERE "_s
                                          + Database::quoted(u"ID"_s) + u" = ?"_s,
                                      { visit.cardUserId });
    if (visit.cardUserId <= 0 || !card.isValid()) {
        setError(error, Message(u"Kullanıcı ID hatalı!"_s));
        return false;
    }
    if (visit.cardId == 0)
        visit.cardId = card.toLongLong();
    // The date is stored as a day, so the look-up of a card "on this day" compares whole days.
    const QVariantList values = { visit.cardUserId,
                                  visit.cardId,
                                  visit.name,
                                  visit.surname,
                                  visit.identityNo,
                                  visit.plate.left(25),
                                  visit.date.isValid() ? m_db.toSql(QDateTime(visit.date, QTime(0, 0))) : QVariant(),
                                  visit.time.isValid() ? m_db.toSqlTime(visit.time) : QVariant(),
                                  visit.reason,
                                  visit.groupNo,
                                  visit.visitedId };
    QString text;
    qint64 newId = 0;
    if (!m_db.insert(u"Visitors"_s, kColumns, values, &text, &newId, u"Kayit No"_s)) {
        setError(error, Message().value(text));
        return false;
    }
    visit.visitNo = newId;
    return true;
}

QList<VisitRow> VisitorRepository::list(const QDate& day, QString* error) const
{
    QString sql = selectSql();
    QVariantList params;
    if (day.isValid()) {
        sql += u"WHERE "_s + Database::quoted(u"Tarih"_s) + u" >= ? AND "_s + Database::quoted(u"Tarih"_s) + u" < ? "_s;
        params = { m_db.toSql(QDateTime(day, QTime(0, 0))), m_db.toSql(QDateTime(day.addDays(1), QTime(0, 0))) };
    }
    sql += u"ORDER BY "_s + Database::quoted(u"Kayit No"_s) + u" DESC"_s;
    QList<VisitRow> rows;
    QSqlQuery q = m_db.query(sql, params, error);
    while (q.next())
        rows << readRow(q);
    return rows;
}

std::optional<VisitRow> VisitorRepository::byVisitNo(qint64 visitNo) const
{
    QSqlQuery q = m_db.query(selectSql() + u"WHERE "_s + Database::quoted(u"Kayit No"_s) + u" = ?"_s, { visitNo });
    if (!q.next())
        return std::nullopt;
    return readRow(q);
}

QHash<qint64, QString> VisitorRepository::namesOf(const QList<qint64>& visitNos, QString* error) const
{
    return PersonName::namesByKey(m_db, u"Visitors"_s, u"Kayit No"_s, visitNos, error);
}

bool VisitorRepository::remove(qint64 visitNo, Message* error)
{
    QString text;
    if (!m_db.exec(u"DELETE FROM \"Visitors\" WHERE "_s + Database::quoted(u"Kayit No"_s) + u" = ?"_s, { visitNo },
                   &text)) {
        setError(error, Message().value(text));
        return false;
    }
    return true;
}
