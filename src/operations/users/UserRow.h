#pragma once

#include "protocol/UserRecord.h"
#include "protocol/UserType.h"

#include <QDateTime>
#include <QString>
#include <optional>

// One row of Users as the users page and the command line edit it.
struct UserRow
{
    qint64 recordNo = 0; // "Kayit No"; 0 for a row not stored yet
    qint32 id = 0;
    qint64 cardId = 0;
    QString name;
    QString surname;
    UserType userType = UserType::Personnel;
    qint32 pin = 0;
    qint32 passageMode = 0;
    qint32 groupNo = 0;
    bool calendarActive = false;
    qint32 calendarNo = 0;
    bool temporaryGroupActive = false;
    qint32 temporaryGroupNo = 0;
    QDate temporaryGroupDate; // null when empty
    QTime temporaryGroupTime; // null when empty
    qint32 companyNo = 0;
    qint32 departmentNo = 0;
    qint32 blockNo = 0;
    qint32 flat = 0;
    QString plate;
    QString identityNo;
    QString address;
    QString picture;

    // The fields that travel to a panel; empty when the card number does not fit the panels' card
    // field (such a user is not sent at all rather than sent with another number).
    std::optional<UserRecord> toRecord() const;

    bool operator==(const UserRow&) const = default;
};
