#pragma once

#include "operations/configuration/GroupCalendarRow.h"
#include "store/Message.h"

#include <QList>
#include <optional>

class Database;

// The group calendars (TimeZoneCalendar): numbers 1..8 only; rows numbered 9 or above are neither
// listed nor sent. The type is kept as a number: 0 for "İki Saat Arası" (switch points are times
// of day), 1 for "İki Tarih Arası" (dates with times); any other stored value reads as dates.
// Every change is one statement; a refused one leaves the table as it was.
class GroupCalendarRepository
{
public:
    static constexpr int FirstNumber = 1;
    static constexpr int LastNumber = 8;

    struct Result
    {
        bool ok = false;
        Message message; // for the person when refused or failed
        QString error; // database text, for the log
    };

    explicit GroupCalendarRepository(const Database& db);

    // Calendars 1..8 in number order, with their group names.
    QList<GroupCalendarRow> list(QString* error = nullptr) const;
    std::optional<GroupCalendarRow> find(int number, QString* error = nullptr) const;

    Result add(const GroupCalendarRow& row) const;
    Result update(const GroupCalendarRow& row) const;
    Result remove(int number) const;

    // The message for a calendar that cannot be stored as it is; empty when it can.
    static Message check(const GroupCalendarRecord& calendar);
    static bool isBetweenHours(const QString& typeText);
    static QString betweenHours();
    static QString betweenDates();

private:
    const Database& m_db;
};
