#pragma once

class SimCommandContext;

// The panel's side of the user memory, clock and daily approval commands.
class SimUserCommands
{
public:
    // False when the code is not one of these commands.
    static bool handle(SimCommandContext& c);
};
