#pragma once

#include "reports/ReportFilter.h"
#include "reports/ReportKind.h"
#include "store/Database.h"

#include <QDate>
#include <QList>
#include <QVariantList>

// A small site with known passages on one day, for the report tests:
//   zones 1 "Ana Bina" and 2 "Otopark"; panel 1 doors 1-2 in zone 1 and doors 3-4 in zone 2,
//   panel 2 entirely in zone 2, panel 3 entirely in zone 1, panel 4 not set up;
//   persons 1..5 (personnel) and 6 (a visitor card), the passages listed in ReportFixture.cpp.
class ReportFixture
{
public:
    static QDate day() { return QDate(2024, 3, 14); }
    static QDateTime at(int dayOffset, int h, int m, int s);
    // The same moment as the reports give it back: the wall-clock reading in UTC.
    static QDateTime wall(int dayOffset, int h, int m, int s);

    // Stores rows of AccessDatas, each: panel, door, global zone, ID, card, moment, direction, code,
    // user type, visit.
    static bool addRecords(Database& db, const QList<QVariantList>& rows, QString* error);
    // Fills an empty database that holds the station's tables.
    static bool seed(Database& db, QString* error);
    // Records stored more than once on the day `repeatDay()`, beside the seeded ones: the door
    // operation of code 6 at 10:00:00 twice; persons 1 (a frame stored twice), 2 (a granted and a
    // denied request in the same second) and 3 (three times) at 09:00:00; person 4 once at
    // 08:00:00; person 5 three times at 07:00:00. 13 records, 6 distinct personnel report rows.
    static QDate repeatDay() { return day().addDays(20); }
    static bool addRepeats(Database& db, QString* error);
    static bool removeRepeats(Database& db, QString* error);

    // Runs a report and returns every row (through the lazy source, in small steps).
    static QList<QVariantList> rows(const Database& db, ReportKind kind, const ReportFilter& filter,
                                    QString* error = nullptr);
    // The values of one column of the rows.
    static QVariantList column(const QList<QVariantList>& rows, int index);
    static ReportFilter oneDay();
};
