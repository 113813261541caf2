#pragma once

class PanelRoster;
class StatusListener;

// The status refresh: every usable panel's doors become unknown, then the status request goes
// out as one datagram; the answers come in through the listener.
class StatusRefresh
{
public:
    // Marks every eligible roster position unknown (door state 2, connection 3).
    static void markUnknown(PanelRoster& roster);
    // markUnknown, then the listener sends the request (on the listener's thread).
    static bool run(PanelRoster& roster, StatusListener& listener);
};
