#include "CliGroupTable.h"

#include "operations/configuration/GroupRepository.h"

using namespace Qt::Literals::StringLiterals;

CliGroupTable::CliGroupTable(Database& db)
    : m_db(db)
{ }

QList<CliGroupTable::Row> CliGroupTable::rows(QString* error) const
{
    QList<Row> result;
    for (const GroupRepository::Row& group : GroupRepository(m_db).list(error))
        result.append({ group.number, group.name.trimmed() });
    return result;
}

bool CliGroupTable::add(const Row& row, QString* error)
{
    if (row.number < 1 || row.number > 1280) {
        *error = u"the group number must be 1..1280"_s;
        return false;
    }
    bool taken = false;
    if (GroupRepository(m_db).add({ row.number, row.name }, error, &taken))
        return true;
    if (taken)
        *error = u"group "_s + QString::number(row.number) + u" exists already"_s;
    return false;
}
