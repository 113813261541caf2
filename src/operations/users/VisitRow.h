#pragma once

#include <QDateTime>
#include <QString>

// One visit (a row of Visitors): the visitor card handed out, who came, whom they visit and why.
struct VisitRow
{
    qint64 visitNo = 0; // "Kayit No"; 0 for a visit not stored yet
    qint32 cardUserId = 0; // "User ID": Users.ID of the visitor card handed out
    qint64 cardId = 0;
    QString name;
    QString surname;
    QString identityNo;
    QString plate;
    QDate date;
    QTime time;
    QString reason;
    qint32 groupNo = 0;
    qint32 visitedId = 0; // "ID": Users.ID of the person visited

    bool operator==(const VisitRow&) const = default;
};
