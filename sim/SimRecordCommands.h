#pragma once

class SimCommandContext;

// The panel's side of the record memory commands (download, count, erase) and the door commands,
// which leave operation records behind.
class SimRecordCommands
{
public:
    static constexpr int kDoorSourceBase = 20000;
    static constexpr int kRelaySourceBase = 20004;
    static constexpr int kTriggerSeconds = 3;

    // False when the code is not one of these commands.
    static bool handle(SimCommandContext& c);
};
