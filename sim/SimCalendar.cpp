#include "SimCalendar.h"

#include "SimText.h"

int SimCalendar::groupAt(const QDateTime& moment) const
{
    if (type == 0) {
        const QTime now = moment.time();
        if (now < time1)
            return group1;
        return now < time2 ? group2 : group3;
    }
    const QDateTime first(date1, time1, Qt::UTC);
    const QDateTime second(date2, time2, Qt::UTC);
    if (!first.isValid() || moment < first)
        return group1;
    if (!second.isValid() || moment < second)
        return group2;
    return group3;
}

std::optional<SimCalendar> SimCalendar::fromFields(const QByteArray& f)
{
    if (f.size() < kFieldsSize)
        return std::nullopt;
    const auto number = SimText::digits(f, 0, 1);
    const auto type = SimText::digits(f, 1, 1);
    const auto h1 = SimText::digits(f, 2, 2);
    const auto m1 = SimText::digits(f, 4, 2);
    const auto h2 = SimText::digits(f, 6, 2);
    const auto m2 = SimText::digits(f, 8, 2);
    const auto d1 = SimText::digits(f, 10, 2);
    const auto mo1 = SimText::digits(f, 12, 2);
    const auto y1 = SimText::digits(f, 14, 4);
    const auto d2 = SimText::digits(f, 18, 2);
    const auto mo2 = SimText::digits(f, 20, 2);
    const auto y2 = SimText::digits(f, 22, 4);
    const auto g1 = SimText::digits(f, 26, 4);
    const auto g2 = SimText::digits(f, 30, 4);
    const auto g3 = SimText::digits(f, 34, 4);
    if (!number || !type || !h1 || !m1 || !h2 || !m2 || !d1 || !mo1 || !y1 || !d2 || !mo2 || !y2 || !g1 || !g2 || !g3)
        return std::nullopt;
    if (*number < 1 || *number > 8 || *type > 1 || *h1 > 23 || *h2 > 23 || *m1 > 59 || *m2 > 59)
        return std::nullopt;
    SimCalendar calendar;
    calendar.number = *number;
    calendar.type = *type;
    calendar.time1 = QTime(*h1, *m1);
    calendar.time2 = QTime(*h2, *m2);
    calendar.date1 = QDate(*y1, *mo1, *d1);
    calendar.date2 = QDate(*y2, *mo2, *d2);
    calendar.group1 = *g1;
    calendar.group2 = *g2;
    calendar.group3 = *g3;
    if (calendar.type == 1 && (!calendar.date1.isValid() || !calendar.date2.isValid()))
        return std::nullopt;
    return calendar;
}
