#pragma once

#include <QVariant>

struct PassageRow;

// The columns of the passage grids (monitoring and access records) and how a row fills them.
class PassageColumns
{
public:
    enum Column
    {
        RecordNo,
        Time,
        Panel,
        Door,
        UserId,
        Card,
        Name,
        Direction,
        Event,
        Count
    };

    // The header of a column in the current language.
    static QString header(int column);
    // What a cell shows for a role: text, alignment, and red for refused passages.
    static QVariant data(const PassageRow& row, int column, int role);
};
