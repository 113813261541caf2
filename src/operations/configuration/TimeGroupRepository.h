#pragma once

#include "operations/configuration/TimeGroupRow.h"
#include "store/Message.h"

#include <QList>
#include <QString>
#include <optional>

class Database;

// The time groups (TimeGroups): when a door is open to the access groups that name it. Numbers
// run 1..16, the most a panel holds. Every change is one statement, so a refused or failed one
// leaves the table as it was. Rights are the caller's business.
//
// Values that only shape a restriction are kept in their ranges rather than refused (normalized):
// the six hours 0..23 (24, midnight, is 0), the additional hours 1..8, unknown types as 0 (no
// restriction), empty per-weekday windows as 08:00-18:00.
class TimeGroupRepository
{
public:
    static constexpr int FirstNumber = 1;
    static constexpr int LastNumber = 16;

    // A time group as pickers and the search list show it.
    struct Entry
    {
        int number = 0;
        QString name;
        bool operator==(const Entry&) const = default;
    };

    struct Result
    {
        bool ok = false;
        int number = 0; // the time group concerned (on a refusal, the refused one)
        Message message; // for the person when refused or failed
        QString error; // database text, for the log
    };

    explicit TimeGroupRepository(const Database& db);

    // Every time group with all its fields, in number order (the order they are sent in).
    QList<TimeGroupRow> list(QString* error = nullptr) const;
    // Numbers and names in number order.
    QList<Entry> entries(QString* error = nullptr) const;
    std::optional<TimeGroupRow> find(int number, QString* error = nullptr) const;
    // The number of the first time group whose name is `name` (blanks around it ignored); 0 when none.
    int numberOf(const QString& name, QString* error = nullptr) const;
    // The number after the highest stored one; refused with "Zaman Grup No değeri 16'yı geçemez!"
    // when that is above 16.
    Result nextNumber() const;

    // A new time group; a number in use is refused with the primary-key message.
    Result add(const TimeGroupRow& row) const;
    // Every field of the time group with row's number.
    Result update(const TimeGroupRow& row) const;
    Result remove(int number) const;

    // The row as it will be stored (see the class comment).
    static TimeGroupRow normalized(TimeGroupRow row);
    // The restriction types the panels know: 0..6 and 8..13.
    static bool isKnownType(int type);
    static Message deleteQuestion();

private:
    QList<TimeGroupRow> select(const QString& where, const QVariantList& params, QString* error) const;
    QVariantList values(const TimeGroupRow& row) const;

    const Database& m_db;
};
