#include "operations/schedule/ApprovalResetRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

ApprovalResetRepository::ApprovalResetRepository(Database& db)
    : m_db(db)
{ }

bool ApprovalResetRepository::load(ApprovalResetPlan* plan, QString* error) const
{
    const QList<QVariantList> rows = m_db.rows(
        u"SELECT \"Onay Sifirlama Aktif\", \"Onay Sifirlama Saati\", \"Onay Sifirlama Panellere\" FROM \"ProgInit\""_s,
        {}, error);
    if (rows.isEmpty())
        return false;
    const QVariantList& row = rows.first();
    ApprovalResetPlan loaded;
    loaded.on = row.value(0).toInt() != 0;
    const QDateTime at = Database::dateTime(row.value(1));
    loaded.time = at.isValid() ? at.time() : QTime();
    loaded.toPanels = row.value(2).toInt() != 0;
    *plan = loaded;
    return true;
}

bool ApprovalResetRepository::save(const ApprovalResetPlan& plan, QString* error)
{
    return m_db.exec(
        u"UPDATE \"ProgInit\" SET \"Onay Sifirlama Aktif\" = ?, \"Onay Sifirlama Saati\" = ?, \"Onay Sifirlama Panellere\" = ?"_s,
        { plan.on, m_db.toSqlTime(plan.time), plan.toPanels }, error);
}
