#pragma once

#include "operations/live/UdpSettings.h"
#include "operations/panels/WalkResult.h"

class Operator;
class OperatorSession;
struct OperationContext;

// Cancelling the panels' alarm and fire states. Every panel at once: after the confirmation and
// the administrator check, "%AS0000000**" goes once as a datagram to the broadcast address. One
// panel: the alarm clear command over the link to it.
class LiveAlarmReset
{
public:
    static WalkResult run(OperationContext& context);
    // The same for a caller without a panel link (the window thread, where a long panel operation
    // on the worker cannot hold the reset up): the datagram needs none.
    static WalkResult run(Operator& op, OperatorSession& session, const UdpSettings& udp);
    // Sends the reset datagram from the status local port (any port when that one is taken).
    static bool send(const UdpSettings& udp, QString* error = nullptr);
    // Clears the alarm of the panel at that roster position; the earlier selection is restored.
    // The administrator check is the caller's, made before the work was handed to the worker.
    static WalkResult clearPanel(OperationContext& context, int position);
};
