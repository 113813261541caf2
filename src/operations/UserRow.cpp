#include "operations/UserRow.h"

#include <limits>

UserRecord UserRow::toRecord() const
{
    UserRecord r;
    r.id = id;
    // The panel's card field holds 10 digits; larger numbers are cut by the frame anyway.
    r.cardId = static_cast<qint32>(qBound<qint64>(0, cardId, qint64(std::numeric_limits<qint32>::max())));
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
