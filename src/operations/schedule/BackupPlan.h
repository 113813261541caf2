#pragma once

#include <QDate>
#include <QDateTime>

// When the server station backs up its database and removes the old passage records: once
// periodMonths months have passed since the last backup, on the first tick of a day of the month
// that is `day` or later. A month shorter than `day` takes its last day instead, so a backup set
// for the 31st is not pushed into the next month; and a backup that failed is due again the next
// day, not only on `day` of a later month. Kept in the station-wide settings row
// (LastBackupDate, BackupPeriode, BackupDay).
struct BackupPlan
{
    static constexpr int MinPeriod = 1;
    static constexpr int MaxPeriod = 120;

    // Invalid when no backup was made yet: the period then starts counting from the first tick.
    QDate lastBackup;
    int periodMonths = 1;
    int day = 1;

    bool isDue(const QDate& today) const;
    // The first day the next backup is due; invalid when no backup was made yet.
    QDate nextDue() const;
    // The day of that month on which the backup is due.
    int dueDay(const QDate& inMonth) const;
    // Records dated before this moment go with the backup: the first day of the month of `today`,
    // up to its last second.
    static QDateTime removalCutoff(const QDate& today);

    bool operator==(const BackupPlan&) const = default;
};
