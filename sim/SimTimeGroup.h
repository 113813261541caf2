#pragma once

#include <QByteArray>
#include <QDateTime>
#include <array>
#include <optional>

// A time group: when a door is open to the groups that name it. What the type code means:
//  0 always; 1 between two dates; 2 outside two dates; 3 between two times of day; 4 outside them;
//  5 on the chosen weekdays; 6 on the chosen weekdays, each within its own hours;
//  8 on the chosen days of the month; 9 within the additional hours on every day;
//  13 on the chosen weekdays within the additional hours;
//  10 from each of three start times for the additional hours; 11 in the six listed hours;
//  12 at any time but the six listed hours.
struct SimTimeGroup
{
    int number = 0;
    int type = 0;
    QDate startDate;
    QDate endDate;
    QTime startTime{ 0, 0 };
    QTime endTime{ 0, 0 };
    std::array<bool, 7> weekdays{}; // Monday first
    std::array<QTime, 7> weekdayStart{};
    std::array<QTime, 7> weekdayEnd{};
    std::array<bool, 31> monthDays{};
    bool extraWindow = false;
    QTime extraStart{ 0, 0 };
    QTime extraEnd{ 0, 0 };
    std::array<QTime, 3> startTimes{};
    int extraHours = 1;
    std::array<int, 6> hours{};

    bool allows(const QDateTime& moment) const;

    static std::optional<SimTimeGroup> fromFields(const QByteArray& fields);
};
