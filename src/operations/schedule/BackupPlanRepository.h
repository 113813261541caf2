#pragma once

#include "operations/schedule/BackupPlan.h"

#include <QString>

class Database;

// The backup settings of the station-wide settings row.
class BackupPlanRepository
{
public:
    explicit BackupPlanRepository(Database& db);

    bool load(BackupPlan* plan, QString* error = nullptr) const;
    // Period and day; the last backup date is left alone.
    bool saveSchedule(const BackupPlan& plan, QString* error = nullptr);
    bool saveLastBackup(const QDate& date, QString* error = nullptr);

private:
    Database& m_db;
};
