#pragma once

#include "sim/SimFault.h"

// A simulator fault in one line: the mode, the commands it touches (none: every command) and how
// many requests it affects (-1: until switched off).
inline SimFault faultOf(SimFault::Mode mode, const QByteArray& code = {}, int remaining = -1)
{
    SimFault f;
    f.mode = mode;
    if (!code.isEmpty())
        f.codes = { code };
    f.remaining = remaining;
    return f;
}
