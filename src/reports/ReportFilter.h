#pragma once

#include "protocol/PassageCode.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QTime>
#include <optional>

// Everything an operator chooses on a report form. A choice left at its default means "all".
// Not every report reads every field: the person filters mean nothing to the door operations
// report, the day only to the attendance reports.
struct ReportFilter
{
    enum class Result
    {
        All,
        Granted,
        AntiPassback,
        Denied,
        Unknown
    };
    enum class Direction
    {
        All,
        Entry,
        Exit
    };
    enum class Presence
    {
        All,
        Inside,
        Outside
    };

    // Panels: all, or the ones listed (an empty list then matches nothing).
    bool allPanels = true;
    QList<int> panels;
    // Doors 1..4: all, or the ones listed.
    bool allDoors = true;
    QList<int> doors;
    // Global door zone number; 0 = all zones.
    int zone = 0;

    // Person filters.
    int person = 0; // user number; 0 = all
    std::optional<int> group;
    std::optional<int> company;
    std::optional<int> department;
    std::optional<int> block;
    std::optional<QString> plate; // compared exactly, as typed
    std::optional<QString> flat; // as typed; must be a whole number

    Result result = Result::All;
    // One door operation; empty (or a code that is no door operation) means all of them.
    std::optional<PassageCode> operation;

    // Date and hour range of the passage reports: all dates, one day (dateStart) or two dates,
    // each either whole days or from hourStart to hourEnd.
    bool allDates = true;
    bool twoDates = false;
    bool twoHours = false;
    QDate dateStart;
    QDate dateEnd;
    QTime hourStart;
    QTime hourEnd;

    Direction direction = Direction::All;

    // The day of the attendance reports; for the monthly view any day of the month.
    QDate day;
    // The in/out report: who to list.
    Presence presence = Presence::Inside;

    // The station: a client only ever sees the panels it watches.
    bool clientStation = false;
    QList<int> watchedPanels;

    // Column keys to export; empty = every column.
    QStringList fields;
};
