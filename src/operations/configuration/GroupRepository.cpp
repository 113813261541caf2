#include "operations/configuration/GroupRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {
const QString kTable = u"GroupsMaster"_s;
const QString kNumber = u"Grup No"_s;
const QString kName = u"Grup Adi"_s;
} // namespace

GroupRepository::GroupRepository(const Database& db)
    : m_db(db)
{ }

QList<GroupRepository::Row> GroupRepository::list(QString* error) const
{
    QList<Row> result;
    const QList<QVariantList> found
        = m_db.rows(u"SELECT "_s + Database::quotedList({ kNumber, kName }) + u" FROM "_s + Database::quoted(kTable)
                        + u" ORDER BY "_s + Database::quoted(kNumber),
                    {}, error);
    for (const QVariantList& r : found)
        result << Row{ r.value(0).toInt(), r.value(1).toString() };
    return result;
}

bool GroupRepository::add(const Row& row, QString* error, bool* taken) const
{
    if (taken)
        *taken = false;
    const QVariant count = m_db.scalar(u"SELECT COUNT(*) FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                           + Database::quoted(kNumber) + u" = ?"_s,
                                       { row.number }, error);
    if (!count.isValid())
        return false;
    if (count.toInt() > 0) {
        if (taken)
            *taken = true;
        return false;
    }
    return m_db.insert(kTable, { kNumber, kName }, { row.number, row.name }, error);
}
