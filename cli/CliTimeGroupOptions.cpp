#include "CliTimeGroupOptions.h"

#include "operations/configuration/TimeGroupRepository.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kNone = u"none"_s;

std::optional<QDate> toDate(const QString& text)
{
    if (text.trimmed() == kNone)
        return QDate();
    const QDate date = QDate::fromString(text.trimmed(), u"dd/MM/yyyy"_s);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

std::optional<QTime> toTime(const QString& text)
{
    if (text.trimmed() == kNone)
        return QTime();
    QTime time = QTime::fromString(text.trimmed(), u"HH:mm"_s);
    if (!time.isValid())
        time = QTime::fromString(text.trimmed(), u"H:mm"_s);
    if (!time.isValid())
        return std::nullopt;
    return time;
}

// "08:00-18:00"
std::optional<std::pair<QTime, QTime>> toWindow(const QString& text)
{
    const QStringList ends = text.split(u'-');
    if (ends.size() != 2)
        return std::nullopt;
    const auto start = toTime(ends.at(0));
    const auto end = toTime(ends.at(1));
    if (!start || !end || start->isNull() || end->isNull())
        return std::nullopt;
    return std::make_pair(*start, *end);
}

// "1,3,7", "all" or "none" over places 1..count.
template <std::size_t N> std::optional<std::array<bool, N>> toPlaces(const QString& text)
{
    std::array<bool, N> places{};
    const QString t = text.trimmed();
    if (t == kNone)
        return places;
    if (t == u"all"_s) {
        places.fill(true);
        return places;
    }
    const QStringList parts = t.split(u',', Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return std::nullopt;
    for (const QString& part : parts) {
        const auto n = CliArguments::toNumber(part, 1, static_cast<qint64>(N));
        if (!n)
            return std::nullopt;
        places[static_cast<std::size_t>(*n - 1)] = true;
    }
    return places;
}

template <std::size_t N> QString placesText(const std::array<bool, N>& places)
{
    QStringList on;
    for (std::size_t i = 0; i < N; ++i) {
        if (places[i])
            on << QString::number(i + 1);
    }
    return on.isEmpty() ? kNone : on.join(u',');
}

QString dateText(const QDate& date)
{
    return date.isValid() ? date.toString(u"dd/MM/yyyy"_s) : kNone;
}

QString timeText(const QTime& time)
{
    return time.isValid() ? time.toString(u"HH:mm"_s) : kNone;
}

// Applies one option when given; `read` returns false when its value is not understood.
template <typename Read>
bool take(const CliArguments& args, const QString& name, const QString& form, QString* error, Read read)
{
    if (!args.has(name))
        return true;
    if (read(args.value(name)))
        return true;
    *error = name + u" takes "_s + form + u", not "_s + args.value(name);
    return false;
}

} // namespace

QList<CliArguments::Option> CliTimeGroupOptions::options()
{
    return {
        { u"--type"_s, u"T"_s, u"restriction type 0..6 or 8..13 (the types are listed below)"_s },
        { u"--start-date"_s, u"DD/MM/YYYY"_s, u"first day (types 1, 2); none to clear"_s },
        { u"--end-date"_s, u"DD/MM/YYYY"_s, u"last day (types 1, 2)"_s },
        { u"--start-time"_s, u"HH:MM"_s, u"start of the daily window (types 3, 4)"_s },
        { u"--end-time"_s, u"HH:MM"_s, u"end of the daily window (types 3, 4)"_s },
        { u"--weekdays"_s, u"LIST"_s, u"days of the week, 1 Monday .. 7 Sunday: 1,2,3, all or none"_s },
        { u"--day-hours"_s, u"WINDOWS"_s,
          u"each weekday's window, applied in order: HH:MM-HH:MM for all days, DAY=HH:MM-HH:MM for one"_s },
        { u"--month-days"_s, u"LIST"_s, u"days of the month 1..31: 1,15,31, all or none"_s },
        { u"--extra-window"_s, u"HH:MM-HH:MM"_s, u"the additional window valid every day, or off"_s },
        { u"--times"_s, u"HH:MM,..."_s, u"up to three start times (type 10)"_s },
        { u"--extra-hours"_s, u"N"_s, u"hours open after each start time, 1..8 (type 10)"_s },
        { u"--extra-hours2"_s, u"N"_s, u"the second additional hours, 1..8"_s },
        { u"--hours"_s, u"H,..."_s, u"up to six whole hours 0..23 (types 11, 12; 24 is midnight)"_s },
    };
}

bool CliTimeGroupOptions::apply(const CliArguments& args, TimeGroupRow* row, QString* error)
{
    TimeGroupRecord& t = row->record;
    const auto number = [](const QString& text, qint64 low, qint64 high, qint32* into) {
        const auto n = CliArguments::toNumber(text, low, high);
        if (n)
            *into = static_cast<qint32>(*n);
        return n.has_value();
    };
    const auto date = [](const QString& text, QDate* into) {
        const auto d = toDate(text);
        if (d)
            *into = *d;
        return d.has_value();
    };
    const auto time = [](const QString& text, QTime* into) {
        const auto tm = toTime(text);
        if (tm)
            *into = *tm;
        return tm.has_value();
    };
    return take(args, u"--type"_s, u"a restriction type 0..6 or 8..13"_s, error,
                [&](const QString& v) {
                    qint32 type = 0;
                    if (!number(v, 0, 13, &type) || !TimeGroupRepository::isKnownType(type))
                        return false;
                    t.restrictionType = type;
                    return true;
                })
        && take(args, u"--start-date"_s, u"DD/MM/YYYY"_s, error,
                [&](const QString& v) { return date(v, &t.startDate); })
        && take(args, u"--end-date"_s, u"DD/MM/YYYY"_s, error, [&](const QString& v) { return date(v, &t.endDate); })
        && take(args, u"--start-time"_s, u"HH:MM"_s, error, [&](const QString& v) { return time(v, &t.startTime); })
        && take(args, u"--end-time"_s, u"HH:MM"_s, error, [&](const QString& v) { return time(v, &t.endTime); })
        && take(args, u"--weekdays"_s, u"days 1..7, all or none"_s, error,
                [&](const QString& v) {
                    const auto days = toPlaces<7>(v);
                    if (days)
                        t.weekdays = *days;
                    return days.has_value();
                })
        && take(args, u"--day-hours"_s, u"HH:MM-HH:MM for every day and/or DAY=HH:MM-HH:MM, comma-separated"_s, error,
                [&](const QString& v) {
                    // Items apply in order: a bare window to every day, DAY= to that day.
                    auto starts = t.weekdayStart;
                    auto ends = t.weekdayEnd;
                    const QStringList items = v.split(u',', Qt::SkipEmptyParts);
                    for (const QString& item : items) {
                        const QStringList parts = item.split(u'=');
                        const auto window = toWindow(parts.constLast());
                        if (parts.size() > 2 || !window)
                            return false;
                        if (parts.size() == 1) {
                            starts.fill(window->first);
                            ends.fill(window->second);
                            continue;
                        }
                        const auto day = CliArguments::toNumber(parts.constFirst(), 1, 7);
                        if (!day)
                            return false;
                        starts[static_cast<std::size_t>(*day - 1)] = window->first;
                        ends[static_cast<std::size_t>(*day - 1)] = window->second;
                    }
                    if (items.isEmpty())
                        return false;
                    t.weekdayStart = starts;
                    t.weekdayEnd = ends;
                    return true;
                })
        && take(args, u"--month-days"_s, u"days 1..31, all or none"_s, error,
                [&](const QString& v) {
                    const auto days = toPlaces<31>(v);
                    if (days)
                        t.monthDays = *days;
                    return days.has_value();
                })
        && take(args, u"--extra-window"_s, u"HH:MM-HH:MM or off"_s, error,
                [&](const QString& v) {
                    if (v.trimmed() == u"off"_s) {
                        t.extraWindow = false;
                        return true;
                    }
                    const auto window = toWindow(v);
                    if (!window)
                        return false;
                    t.extraWindow = true;
                    t.extraStart = window->first;
                    t.extraEnd = window->second;
                    return true;
                })
        && take(args, u"--times"_s, u"up to three HH:MM"_s, error,
                [&](const QString& v) {
                    const QStringList parts = v.split(u',');
                    if (parts.size() > 3)
                        return false;
                    std::array<QTime, 3> times{};
                    for (int i = 0; i < parts.size(); ++i) {
                        if (!time(parts.at(i), &times[static_cast<std::size_t>(i)]))
                            return false;
                    }
                    t.startTimes = times;
                    return true;
                })
        && take(args, u"--extra-hours"_s, u"a whole number 1..8"_s, error,
                [&](const QString& v) { return number(v, 1, 8, &t.extraHours); })
        && take(args, u"--extra-hours2"_s, u"a whole number 1..8"_s, error,
                [&](const QString& v) { return number(v, 1, 8, &t.extraHours2); })
        && take(args, u"--hours"_s, u"up to six whole hours 0..24"_s, error, [&](const QString& v) {
               const QStringList parts = v.split(u',');
               if (parts.size() > 6)
                   return false;
               std::array<qint32, 6> hours{};
               for (int i = 0; i < parts.size(); ++i) {
                   if (!number(parts.at(i), 0, 24, &hours[static_cast<std::size_t>(i)]))
                       return false;
               }
               t.hours = hours;
               return true;
           });
}

QString CliTimeGroupOptions::describe(const TimeGroupRow& row)
{
    const TimeGroupRecord& t = row.record;
    QStringList out;
    const auto weekdays = [&] { out << u"--weekdays"_s << placesText(t.weekdays); };
    const auto dayHours = [&] {
        QStringList days;
        for (int d = 0; d < 7; ++d)
            days << QString::number(d + 1) + u'=' + timeText(t.weekdayStart[d]) + u'-' + timeText(t.weekdayEnd[d]);
        out << u"--day-hours"_s << days.join(u',');
    };
    const auto extraWindow = [&] {
        out << u"--extra-window"_s << (t.extraWindow ? timeText(t.extraStart) + u'-' + timeText(t.extraEnd) : u"off"_s);
    };
    switch (t.restrictionType) {
    case 1:
    case 2:
        out << u"--start-date"_s << dateText(t.startDate) << u"--end-date"_s << dateText(t.endDate);
        break;
    case 3:
    case 4:
        out << u"--start-time"_s << timeText(t.startTime) << u"--end-time"_s << timeText(t.endTime);
        break;
    case 5:
        weekdays();
        break;
    case 6:
        weekdays();
        dayHours();
        break;
    case 8:
        out << u"--month-days"_s << placesText(t.monthDays);
        break;
    case 9:
        weekdays();
        extraWindow();
        break;
    case 13:
        weekdays();
        dayHours();
        extraWindow();
        break;
    case 10: {
        QStringList times;
        for (const QTime& start : t.startTimes)
            times << timeText(start);
        out << u"--times"_s << times.join(u',') << u"--extra-hours"_s << QString::number(t.extraHours);
        break;
    }
    case 11:
    case 12: {
        QStringList hours;
        for (const qint32 hour : t.hours)
            hours << QString::number(hour);
        out << u"--hours"_s << hours.join(u',');
        break;
    }
    default:
        break;
    }
    return out.join(u' ');
}
