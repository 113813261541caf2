#include "SimTimeGroup.h"

#include "SimText.h"

namespace {
std::optional<QDate> readDate(const QByteArray& f, qsizetype pos)
{
    const auto day = SimText::digits(f, pos, 2);
    const auto month = SimText::digits(f, pos + 2, 2);
    const auto year = SimText::digits(f, pos + 4, 2);
    if (!day || !month || !year)
        return std::nullopt;
    if (*day == 0 && *month == 0 && *year == 0)
        return QDate();
    const QDate date(2000 + *year, *month, *day);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

std::optional<QTime> readTime(const QByteArray& f, qsizetype pos)
{
    const auto hour = SimText::digits(f, pos, 2);
    const auto minute = SimText::digits(f, pos + 2, 2);
    if (!hour || !minute || *minute > 59 || *hour > 24)
        return std::nullopt;
    // 24:00 is the end of the day.
    if (*hour == 24)
        return QTime(23, 59, 59, 999);
    return QTime(*hour, *minute);
}

// A window whose end is before its start runs over midnight.
bool within(const QTime& now, const QTime& start, const QTime& end)
{
    if (start <= end)
        return now >= start && now < end;
    return now >= start || now < end;
}
} // namespace

bool SimTimeGroup::allows(const QDateTime& moment) const
{
    const QDate today = moment.date();
    const QTime now = moment.time();
    const int weekday = today.dayOfWeek() - 1;
    switch (type) {
    case 0:
        return true;
    case 1:
    case 2: {
        const bool between = startDate.isValid() && endDate.isValid() && today >= startDate && today <= endDate;
        return type == 1 ? between : !between;
    }
    case 3:
    case 4: {
        const bool between = within(now, startTime, endTime);
        return type == 3 ? between : !between;
    }
    case 5:
        return weekdays[weekday];
    case 6:
        return weekdays[weekday] && within(now, weekdayStart[weekday], weekdayEnd[weekday]);
    case 8:
        return monthDays[today.day() - 1];
    case 9:
        return weekdays[weekday] && (!extraWindow || within(now, extraStart, extraEnd));
    case 13:
        return weekdays[weekday]
            && (within(now, weekdayStart[weekday], weekdayEnd[weekday])
                || (extraWindow && within(now, extraStart, extraEnd)));
    case 10:
        for (const QTime& start : startTimes) {
            if (start.isValid() && start != QTime(0, 0) && now >= start
                && start.msecsTo(now) < qint64(extraHours) * 3600 * 1000)
                return true;
        }
        return false;
    case 11:
    case 12: {
        bool listed = false;
        for (int hour : hours)
            listed = listed || hour == now.hour();
        return type == 11 ? listed : !listed;
    }
    default:
        return false;
    }
}

std::optional<SimTimeGroup> SimTimeGroup::fromFields(const QByteArray& f)
{
    // Time group fields after the head: number 2, type 2, basic area 12, weekdays 7, weekday windows 56,
    // days of month 31, additional window flag 1 + start 4 + end 4, additional hours 1 + 1.
    constexpr int kSize = 121;
    if (f.size() < kSize)
        return std::nullopt;
    const auto number = SimText::digits(f, 0, 2);
    const auto type = SimText::digits(f, 2, 2);
    if (!number || !type || *number < 1 || *number > 16)
        return std::nullopt;
    SimTimeGroup group;
    group.number = *number;
    group.type = *type;
    constexpr qsizetype basic = 4;
    if (group.type == 1 || group.type == 2) {
        const auto start = readDate(f, basic);
        const auto end = readDate(f, basic + 6);
        if (!start || !end)
            return std::nullopt;
        group.startDate = *start;
        group.endDate = *end;
    } else if (group.type == 3 || group.type == 4) {
        const auto start = readTime(f, basic);
        const auto end = readTime(f, basic + 4);
        if (!start || !end)
            return std::nullopt;
        group.startTime = *start;
        group.endTime = *end;
    } else if (group.type == 10) {
        for (int i = 0; i < 3; ++i) {
            const auto start = readTime(f, basic + 4 * i);
            if (!start)
                return std::nullopt;
            group.startTimes[i] = *start;
        }
    } else if (group.type == 11 || group.type == 12) {
        for (int i = 0; i < 6; ++i) {
            const auto hour = SimText::digits(f, basic + 2 * i, 2);
            if (!hour)
                return std::nullopt;
            group.hours[i] = *hour;
        }
    }
    constexpr qsizetype weekdays = 16;
    constexpr qsizetype windows = 23;
    constexpr qsizetype monthDays = 79;
    constexpr qsizetype extra = 110;
    for (int day = 0; day < 7; ++day) {
        const auto flag = SimText::flag(f, weekdays + day);
        const auto start = readTime(f, windows + 8 * day);
        const auto end = readTime(f, windows + 8 * day + 4);
        if (!flag || !start || !end)
            return std::nullopt;
        group.weekdays[day] = *flag;
        group.weekdayStart[day] = *start;
        group.weekdayEnd[day] = *end;
    }
    for (int day = 0; day < 31; ++day) {
        const auto flag = SimText::flag(f, monthDays + day);
        if (!flag)
            return std::nullopt;
        group.monthDays[day] = *flag;
    }
    const auto extraOn = SimText::flag(f, extra);
    const auto extraStart = readTime(f, extra + 1);
    const auto extraEnd = readTime(f, extra + 5);
    const auto extraHours = SimText::digits(f, extra + 9, 1);
    if (!extraOn || !extraStart || !extraEnd || !extraHours)
        return std::nullopt;
    group.extraWindow = *extraOn;
    group.extraStart = *extraStart;
    group.extraEnd = *extraEnd;
    group.extraHours = *extraHours;
    return group;
}
