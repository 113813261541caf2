#pragma once

#include <QDate>
#include <QString>
#include <QTime>

// One group calendar (a row of TimeZoneCalendar).
struct GroupCalendarRecord
{
    qint32 number = 0;
    QString typeText; // "İki Saat Arası" or "İki Tarih Arası"
    QDate date1;
    QDate date2;
    QTime time1;
    QTime time2;
    qint32 group1 = 0;
    qint32 group2 = 0;
    qint32 group3 = 0;
};
