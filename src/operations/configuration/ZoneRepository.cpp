#include "operations/configuration/ZoneRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

ZoneRepository::ZoneRepository(const Database& db)
    : m_db(db)
{ }

QList<ZoneRepository::Row> ZoneRepository::list(QString* error) const
{
    QList<Row> result;
    const QString number = u"Global Bolge No"_s;
    const QList<QVariantList> rows = m_db.rows(u"SELECT "_s + Database::quotedList({ number, u"Global Bolge Adi"_s })
                                                   + u" FROM \"GlobalZones\" ORDER BY "_s + Database::quoted(number),
                                               {}, error);
    for (const QVariantList& row : rows)
        result << Row{ row.value(0).toInt(), row.value(1).toString() };
    return result;
}
