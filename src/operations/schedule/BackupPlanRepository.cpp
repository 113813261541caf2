#include "operations/schedule/BackupPlanRepository.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

BackupPlanRepository::BackupPlanRepository(Database& db)
    : m_db(db)
{ }

bool BackupPlanRepository::load(BackupPlan* plan, QString* error) const
{
    const QList<QVariantList> rows
        = m_db.rows(u"SELECT \"LastBackupDate\", \"BackupPeriode\", \"BackupDay\" FROM \"ProgInit\""_s, {}, error);
    if (rows.isEmpty())
        return false;
    const QVariantList& row = rows.first();
    BackupPlan loaded;
    loaded.lastBackup = Database::dateTime(row.value(0)).date();
    loaded.periodMonths = row.value(1).isNull() ? 1 : row.value(1).toInt();
    loaded.day = row.value(2).isNull() ? 1 : row.value(2).toInt();
    *plan = loaded;
    return true;
}

bool BackupPlanRepository::saveSchedule(const BackupPlan& plan, QString* error)
{
    return m_db.exec(u"UPDATE \"ProgInit\" SET \"BackupPeriode\" = ?, \"BackupDay\" = ?"_s,
                     { plan.periodMonths, plan.day }, error);
}

bool BackupPlanRepository::saveLastBackup(const QDate& date, QString* error)
{
    return m_db.exec(u"UPDATE \"ProgInit\" SET \"LastBackupDate\" = ?"_s, { m_db.toSql(QDateTime(date, QTime(0, 0))) },
                     error);
}
