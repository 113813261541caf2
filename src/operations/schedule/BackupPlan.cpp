#include "operations/schedule/BackupPlan.h"

#include <algorithm>

bool BackupPlan::isDue(const QDate& today) const
{
    const QDate due = nextDue();
    return due.isValid() && today.isValid() && today >= due;
}

QDate BackupPlan::nextDue() const
{
    if (!lastBackup.isValid())
        return QDate();
    const QDate periodEnd = lastBackup.addMonths(std::max(periodMonths, 0));
    const int day = dueDay(periodEnd);
    return periodEnd.day() >= day ? periodEnd : QDate(periodEnd.year(), periodEnd.month(), day);
}

int BackupPlan::dueDay(const QDate& inMonth) const
{
    return std::clamp(day, 1, inMonth.daysInMonth());
}

QDateTime BackupPlan::removalCutoff(const QDate& today)
{
    return QDateTime(QDate(today.year(), today.month(), 1), QTime(23, 59, 59));
}
