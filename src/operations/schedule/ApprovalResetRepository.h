#pragma once

#include "operations/schedule/ApprovalResetPlan.h"

#include <QString>

class Database;

// The approval reset settings of the station-wide settings row.
class ApprovalResetRepository
{
public:
    explicit ApprovalResetRepository(Database& db);

    bool load(ApprovalResetPlan* plan, QString* error = nullptr) const;
    bool save(const ApprovalResetPlan& plan, QString* error = nullptr);

private:
    Database& m_db;
};
