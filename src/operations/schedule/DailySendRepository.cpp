#include "operations/schedule/DailySendRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

DailySendRepository::DailySendRepository(Database& db)
    : m_db(db)
{ }

bool DailySendRepository::changedOnly(QString* error) const
{
    return m_db.scalar(u"SELECT "_s + Database::quoted(column()) + u" FROM \"ProgInit\""_s, {}, error).toInt() != 0;
}

bool DailySendRepository::saveChangedOnly(bool changedOnly, QString* error)
{
    return m_db.exec(u"UPDATE \"ProgInit\" SET "_s + Database::quoted(column()) + u" = ?"_s, { changedOnly ? 1 : 0 },
                     error);
}

QString DailySendRepository::column()
{
    return u"Gunluk Gonderim Degisenler"_s;
}
