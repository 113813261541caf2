#pragma once

#include <QDate>
#include <QTime>
#include <array>

// One time group (a row of TimeGroups). Null dates and times are empty columns.
struct TimeGroupRecord
{
    qint32 number = 0;
    qint32 restrictionType = 0;
    QDate startDate;
    QDate endDate;
    QTime startTime;
    QTime endTime;
    std::array<bool, 7> weekdays{}; // Monday first
    std::array<QTime, 7> weekdayStart{};
    std::array<QTime, 7> weekdayEnd{};
    std::array<bool, 31> monthDays{};
    bool extraWindow = false;
    QTime extraStart;
    QTime extraEnd;
    std::array<QTime, 3> startTimes{};
    qint32 extraHours = 0;
    qint32 extraHours2 = 0;
    std::array<qint32, 6> hours{};

    bool operator==(const TimeGroupRecord&) const = default;
};
