#pragma once

#include "operations/UdpSettings.h"
#include "operations/WalkResult.h"

struct OperationContext;

// The fire alarm reset: after the confirmation and the administrator check, "%AS0000000**" goes
// once as a datagram to the broadcast address, and every panel clears its alarm and fire state.
class LiveAlarmReset
{
public:
    static WalkResult run(OperationContext& context);
    // Sends the reset datagram from the status local port (any port when that one is taken).
    static bool send(const UdpSettings& udp, QString* error = nullptr);
};
