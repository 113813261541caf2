#include "CliGroupTable.h"

#include "store/Database.h"

using namespace Qt::Literals::StringLiterals;

namespace {
const QString kTable = u"GroupsMaster"_s;
const QString kNumber = u"Grup No"_s;
const QString kName = u"Grup Adi"_s;
} // namespace

CliGroupTable::CliGroupTable(Database& db)
    : m_db(db)
{ }

QList<CliGroupTable::Row> CliGroupTable::rows(QString* error) const
{
    QList<Row> result;
    const QList<QVariantList> found
        = m_db.rows(u"SELECT "_s + Database::quotedList({ kNumber, kName }) + u" FROM "_s + Database::quoted(kTable)
                        + u" ORDER BY "_s + Database::quoted(kNumber),
                    {}, error);
    for (const QVariantList& r : found)
        result.append({ r.value(0).toInt(), r.value(1).toString().trimmed() });
    return result;
}

bool CliGroupTable::add(const Row& row, QString* error)
{
    if (row.number < 1 || row.number > 1280) {
        *error = u"the group number must be 1..1280"_s;
        return false;
    }
    const QVariant taken = m_db.scalar(u"SELECT COUNT(*) FROM "_s + Database::quoted(kTable) + u" WHERE "_s
                                           + Database::quoted(kNumber) + u" = ?"_s,
                                       { row.number }, error);
    if (!taken.isValid())
        return false;
    if (taken.toInt() > 0) {
        *error = u"group "_s + QString::number(row.number) + u" exists already"_s;
        return false;
    }
    return m_db.insert(kTable, { kNumber, kName }, { row.number, row.name }, error);
}
