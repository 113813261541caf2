#include "operations/users/UserRow.h"

#include "protocol/CardField.h"

std::optional<UserRecord> UserRow::toRecord() const
{
    if (!fitsCardField(cardId))
        return std::nullopt;
    UserRecord r;
    r.id = id;
    r.cardId = static_cast<qint32>(cardId);
    r.pin = pin;
    r.passageMode = passageMode;
    r.groupNo = groupNo;
    r.calendarActive = calendarActive;
    r.temporaryGroupActive = temporaryGroupActive;
    r.calendarNo = calendarNo;
    r.temporaryGroupNo = temporaryGroupNo;
    r.temporaryGroupTime = temporaryGroupTime;
    r.temporaryGroupDate = temporaryGroupDate;
    return r;
}
