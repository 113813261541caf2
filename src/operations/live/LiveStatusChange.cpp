#include "operations/live/LiveStatusChange.h"

using namespace Qt::StringLiterals;

Message LiveStatusChange::message() const
{
    if (status.fire)
        return Message(u"Yangın"_s);
    if (status.zone1Full || status.zone2Full)
        return Message(u"Dolu"_s);
    return Message();
}
