#include "protocol/PassageCode.h"

qint32 storedNumber(PassageCode code)
{
    return static_cast<qint32>(code);
}

PassageCode passageCodeOf(qint32 number)
{
    return static_cast<PassageCode>(number);
}

bool isRefusal(PassageCode code)
{
    switch (code) {
    case PassageCode::Denied:
    case PassageCode::AntiPassback:
    case PassageCode::OutOfTime:
    case PassageCode::UnknownCard:
        return true;
    default:
        return false;
    }
}

bool namesPerson(PassageCode code)
{
    return storedNumber(code) < storedNumber(PassageCode::OperatorTrigger);
}

bool isDoorOperation(PassageCode code)
{
    return storedNumber(code) >= storedNumber(PassageCode::OperatorTrigger)
        && storedNumber(code) <= storedNumber(PassageCode::ProgrammedClose);
}
