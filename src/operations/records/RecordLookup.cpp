#include "operations/records/RecordLookup.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

// "?, ?, ..." for an IN list of these cards, with the values to bind.
QString cardList(const QSet<qint64>& cards, QVariantList& params)
{
    QString sql;
    for (qint64 card : cards) {
        if (!sql.isEmpty())
            sql += u", "_s;
        sql += u'?';
        params << card;
    }
    return sql;
}

std::optional<UserType> optionalUserType(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    return userTypeOf(value.toInt());
}

} // namespace

RecordLookup::RecordLookup(const Database& db)
    : m_db(db)
{ }

bool RecordLookup::loadUserCards(QString* error)
{
    m_cardOfUser.clear();
    QString why;
    QSqlQuery q = m_db.query(u"SELECT \"ID\", \"Kart ID\" FROM \"Users\" WHERE \"ID\" > 0"_s, {}, &why);
    if (!q.isActive()) {
        setError(error, why);
        return false;
    }
    while (q.next()) {
        const qint32 id = q.value(0).toInt();
        if (!m_cardOfUser.contains(id))
            m_cardOfUser.insert(id, q.value(1).toLongLong());
    }
    return true;
}

qint64 RecordLookup::cardOfUser(qint32 userId) const
{
    return m_cardOfUser.value(userId, 0);
}

bool RecordLookup::loadUserTypes(const QSet<qint64>& cards, QString* error)
{
    m_userType.clear();
    if (cards.isEmpty())
        return true;
    QVariantList params;
    QString sql = u"SELECT \"Kart ID\", \"Kullanici Tipi\" FROM \"Users\""_s;
    if (cards.size() <= ListLimit)
        sql += u" WHERE \"Kart ID\" IN ("_s + cardList(cards, params) + u')';
    sql += u" ORDER BY \"Kayit No\""_s;
    QString why;
    QSqlQuery q = m_db.query(sql, params, &why);
    if (!q.isActive()) {
        setError(error, why);
        return false;
    }
    while (q.next()) {
        const qint64 card = q.value(0).toLongLong();
        // The first user of a card (in creation order) is the one that counts.
        if (!m_userType.contains(card))
            m_userType.insert(card, optionalUserType(q.value(1)));
    }
    return true;
}

std::optional<UserType> RecordLookup::userType(qint64 cardId) const
{
    return m_userType.value(cardId, std::nullopt);
}

bool RecordLookup::loadVisits(const QSet<qint64>& cards, const QDate& first, const QDate& last, QString* error)
{
    m_visits.clear();
    if (cards.isEmpty() || !first.isValid() || !last.isValid())
        return true;
    QVariantList params{ m_db.toSql(QDateTime(first, QTime(0, 0))),
                         m_db.toSql(QDateTime(last.addDays(1), QTime(0, 0))) };
    QString sql = u"SELECT \"Kayit No\", \"Kart ID\", \"Tarih\", \"Saat\" FROM \"Visitors\" "
                  u"WHERE \"Tarih\" >= ? AND \"Tarih\" < ?"_s;
    if (cards.size() <= ListLimit)
        sql += u" AND \"Kart ID\" IN ("_s + cardList(cards, params) + u')';
    sql += u" ORDER BY \"Kayit No\""_s;
    QString why;
    QSqlQuery q = m_db.query(sql, params, &why);
    if (!q.isActive()) {
        setError(error, why);
        return false;
    }
    while (q.next()) {
        Visit visit;
        visit.visitNo = q.value(0).toLongLong();
        visit.date = Database::dateTime(q.value(2)).date();
        const QDateTime at = Database::dateTime(q.value(3));
        visit.timeSet = at.isValid();
        visit.time = at.time();
        m_visits[q.value(1).toLongLong()].append(visit);
    }
    return true;
}

std::optional<qint64> RecordLookup::visitorNo(qint64 cardId, const QDateTime& passage) const
{
    std::optional<qint64> found;
    const auto it = m_visits.constFind(cardId);
    if (it == m_visits.constEnd())
        return found;
    // Walked in registration order: the last visit registered before the passage wins.
    for (const Visit& visit : *it) {
        if (visit.date == passage.date() && visit.timeSet && visit.time < passage.time())
            found = visit.visitNo;
    }
    return found;
}

bool RecordLookup::loadZones(QString* error)
{
    m_zones.clear();
    QString why;
    QSqlQuery q = m_db.query(u"SELECT \"Panel ID\", \"Kapi1 Lokal Bolge\", \"Kapi2 Lokal Bolge\", "
                             u"\"Kapi3 Lokal Bolge\", \"Kapi4 Lokal Bolge\", \"Panel Global Bolge1\", "
                             u"\"Panel Global Bolge2\" FROM \"PanelSettings\" ORDER BY \"Sira No\""_s,
                             {}, &why);
    if (!q.isActive()) {
        setError(error, why);
        return false;
    }
    const auto intOr = [](const QVariant& value, qint32 fallback) {
        return value.isNull() || !value.isValid() ? fallback : value.toInt();
    };
    while (q.next()) {
        const qint32 panel = q.value(0).toInt();
        if (m_zones.contains(panel))
            continue; // the first row of a panel number is the one the roster uses
        PanelZones zones;
        for (int d = 0; d < 4; ++d)
            zones.doorZone[d] = intOr(q.value(1 + d), 1) == 2 ? 2 : 1;
        zones.global1 = intOr(q.value(5), 1);
        zones.global2 = intOr(q.value(6), 1);
        m_zones.insert(panel, zones);
    }
    return true;
}

RecordLookup::Zones RecordLookup::zonesOf(qint32 panelNumber, qint32 door, std::optional<qint32> reportedZone) const
{
    Zones zones;
    const auto it = m_zones.constFind(panelNumber);
    if (it != m_zones.constEnd() && door >= 1 && door <= 4)
        zones.local = it->doorZone[door - 1];
    else if (reportedZone && (*reportedZone == 1 || *reportedZone == 2))
        zones.local = *reportedZone;
    if (it != m_zones.constEnd()) {
        const qint32 global = zones.local == 2 ? it->global2 : it->global1;
        zones.global = global >= 1 && global <= 999 ? global : 1;
    }
    return zones;
}
