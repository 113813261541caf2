#pragma once

#include <QDate>
#include <QTime>

// The fields of one card holder that travel to a panel (a row of Users). A null date or time
// stands for an empty column.
struct UserRecord
{
    qint32 id = 0;
    qint32 cardId = 0;
    qint32 pin = 0;
    qint32 passageMode = 0;
    qint32 groupNo = 0;
    bool calendarActive = false;
    bool temporaryGroupActive = false;
    qint32 calendarNo = 0; // 0 when the column is empty
    qint32 temporaryGroupNo = 0;
    QTime temporaryGroupTime;
    QDate temporaryGroupDate;

    bool operator==(const UserRecord&) const = default;
};
