#pragma once

#include <QtGlobal>

// The event of a passage record ("Kod"): what the panel decided at a door, or which door
// operation it carried out. Panels may send numbers that are not named here; they travel and are
// stored as they came.
enum class PassageCode : qint32
{
    Denied = 0,
    Granted = 1,
    AntiPassback = 2,
    OutOfTime = 3,
    UnknownCard = 4,
    OperatorTrigger = 5,
    OperatorOpen = 6,
    OperatorClose = 7,
    ButtonTrigger = 8,
    ProgrammedOpen = 9,
    ProgrammedClose = 10,
};

// The number as panels send it and AccessDatas stores it, and back.
qint32 storedNumber(PassageCode code);
PassageCode passageCodeOf(qint32 number);

// A passage the panel turned away: denied, anti-passback, out of its time or an unknown card.
bool isRefusal(PassageCode code);
// A passage made by a person; from the operator's trigger on, the codes are door operations whose
// user field holds the operation's number.
bool namesPerson(PassageCode code);
// One of the door operations, from the operator's trigger to the programmed close.
bool isDoorOperation(PassageCode code);
