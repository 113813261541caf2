#include "operations/doors/DoorRequest.h"

bool DoorRequest::anyChosen() const
{
    for (int i = 0; i < 4; ++i) {
        if (doors[i] || relays[i])
            return true;
    }
    return false;
}
