#pragma once

#include <QVariant>

struct PassageRow;
class QTableView;

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
    // Shows a "dd/MM/yyyy HH:mm:ss" column of `view` on one line, wide enough in its font.
    static void fitMoment(QTableView* view, int column = Time);
};
