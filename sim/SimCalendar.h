#pragma once

#include <QByteArray>
#include <QDateTime>
#include <optional>

// A group calendar: users who follow it belong to the first group until the first switch point, to
// the second until the second switch point, and to the third after it. Type 0 switches at times of
// day (every day anew), type 1 at dates with times.
struct SimCalendar
{
    static constexpr int kFieldsSize = 38;

    int number = 0;
    int type = 1;
    QTime time1;
    QTime time2;
    QDate date1;
    QDate date2;
    int group1 = 0;
    int group2 = 0;
    int group3 = 0;

    int groupAt(const QDateTime& moment) const;

    static std::optional<SimCalendar> fromFields(const QByteArray& fields);
};
