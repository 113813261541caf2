#include "operations/users/SendableUsers.h"

#include "protocol/CardField.h"
#include "protocol/UserCommands.h"
#include "store/Database.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

SendableUsers SendableUsers::load(const Database& db, const UserSelection& selection)
{
    QString sql = u"SELECT "_s
        + Database::quotedList({ u"ID"_s, u"Kart ID"_s, u"Sifre"_s, u"Gecis Modu"_s, u"Grup No"_s,
                                 u"Grup Takvimi Aktif"_s, u"Grup Takvimi No"_s, u"Gecici Grup Aktif"_s,
                                 u"Gecici Grup No"_s, u"Gecici Grup Tarih"_s, u"Gecici Grup Saat"_s })
        + u" FROM \"Users\" WHERE "_s;
    const QString id = Database::quoted(u"ID"_s);
    QVariantList params;
    if (selection.allUsers) {
        sql += id + u" > 0 "_s;
    } else {
        sql += id + u" >= ? AND "_s + id + u" <= ? "_s;
        params = { selection.range.first, selection.range.last };
    }
    sql += u"ORDER BY "_s + id;
    SendableUsers users;
    QSqlQuery q = db.query(sql, params);
    while (q.next()) {
        UserRecord u;
        u.id = q.value(0).toInt();
        const qint64 card = q.value(1).toLongLong();
        if (!fitsCardField(card)) {
            users.refused << u.id;
            continue;
        }
        u.cardId = static_cast<qint32>(card);
        u.pin = q.value(2).toInt();
        u.passageMode = q.value(3).toInt();
        u.groupNo = q.value(4).toInt();
        u.calendarActive = q.value(5).toInt() != 0;
        u.calendarNo = q.value(6).toInt();
        u.temporaryGroupActive = q.value(7).toInt() != 0;
        u.temporaryGroupNo = q.value(8).toInt();
        const QDateTime date = Database::dateTime(q.value(9));
        u.temporaryGroupDate = date.isValid() ? date.date() : QDate();
        const QDateTime time = Database::dateTime(q.value(10));
        u.temporaryGroupTime = time.isValid() ? time.time() : QTime();
        users.sendable << u;
    }
    return users;
}

void SendableUsers::addFingerprints()
{
    fingerprints.clear();
    fingerprints.reserve(sendable.size());
    for (const UserRecord& user : std::as_const(sendable))
        fingerprints << fingerprint(user);
}

QByteArray SendableUsers::fingerprintAt(qsizetype index) const
{
    return index < fingerprints.size() ? fingerprints.at(index) : fingerprint(sendable.at(index));
}

QByteArray SendableUsers::fingerprint(const UserRecord& user)
{
    static const QDateTime fixed(Database::timeBaseDate(), QTime(0, 0));
    return BuildUserBlock(user, fixed);
}
