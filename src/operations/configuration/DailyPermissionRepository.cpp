#include "operations/configuration/DailyPermissionRepository.h"

#include "store/Database.h"
#include "store/Transaction.h"

using namespace Qt::StringLiterals;

namespace {
const QString kApproved = u"Gunluk Gecis Onayi"_s;
const QString kGroup = u"Grup No"_s;

QString q(const QString& identifier)
{
    return Database::quoted(identifier);
}
} // namespace

DailyPermissionRepository::DailyPermissionRepository(Database& db)
    : m_db(db)
{ }

QList<DailyPermissionRepository::Member>
DailyPermissionRepository::select(const QString& where, const QVariantList& params, QString* error) const
{
    QList<Member> result;
    const QString sql = u"SELECT "_s + Database::quotedList({ u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, kApproved })
        + u" FROM "_s + q(u"Users"_s) + u" WHERE "_s + where + u" ORDER BY "_s + q(u"ID"_s);
    for (const QVariantList& v : m_db.rows(sql, params, error)) {
        result << Member{ v.value(0).toInt(), v.value(1).toLongLong(), v.value(2).toString().trimmed(),
                          v.value(3).toString().trimmed(), v.value(4).toInt() != 0 };
    }
    return result;
}

QList<DailyPermissionRepository::Member> DailyPermissionRepository::members(int group, QString* error) const
{
    return select(q(kGroup) + u" = ?"_s, { group }, error);
}

QList<DailyPermissionRepository::Member> DailyPermissionRepository::membersNeedingApproval(QString* error) const
{
    return select(q(kGroup) + u" IN (SELECT "_s + q(kGroup) + u" FROM "_s + q(u"GroupsMaster"_s) + u" WHERE "_s
                      + q(u"Gunluk Onay Gerekli"_s) + u" <> 0)"_s,
                  {}, error);
}

QString DailyPermissionRepository::groupName(int group, QString* error) const
{
    return m_db
        .scalar(u"SELECT "_s + q(u"Grup Adi"_s) + u" FROM "_s + q(u"GroupsMaster"_s) + u" WHERE "_s + q(kGroup)
                    + u" = ?"_s,
                { group }, error)
        .toString()
        .trimmed();
}

bool DailyPermissionRepository::store(const QList<Member>& members, QString* error) const
{
    Transaction transaction(m_db);
    if (!transaction.isActive()) {
        if (error)
            *error = transaction.error();
        return false;
    }
    const QString sql
        = u"UPDATE "_s + q(u"Users"_s) + u" SET "_s + q(kApproved) + u" = ? WHERE "_s + q(u"ID"_s) + u" = ?"_s;
    for (const Member& member : members) {
        if (!m_db.exec(sql, { member.approved, member.id }, error))
            return false;
    }
    return transaction.commit(error);
}

bool DailyPermissionRepository::setAll(int group, bool approved, QString* error) const
{
    return m_db.exec(u"UPDATE "_s + q(u"Users"_s) + u" SET "_s + q(kApproved) + u" = ? WHERE "_s + q(kGroup)
                         + u" = ?"_s,
                     { approved, group }, error);
}

int DailyPermissionRepository::resetAll(QString* error) const
{
    return m_db.execCount(u"UPDATE "_s + q(u"Users"_s) + u" SET "_s + q(kApproved) + u" = ? WHERE "_s + q(kApproved)
                              + u" <> ?"_s,
                          { false, false }, error);
}
