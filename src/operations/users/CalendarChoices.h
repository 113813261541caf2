#pragma once

#include <QMap>
#include <QString>

class Database;

// The group calendars a user can be put under: numbers 1..8, the only ones the panels keep,
// each named by the calendar table when it has that calendar and by its number otherwise.
class CalendarChoices
{
public:
    static constexpr int kHighest = 8;

    static QMap<int, QString> read(const Database& db, QString* error = nullptr);
};
