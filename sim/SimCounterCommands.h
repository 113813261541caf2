#pragma once

class SimCommandContext;

// The panel's side of the counter, anti-passback, alarm and reader commands.
class SimCounterCommands
{
public:
    // False when the code is not one of these commands.
    static bool handle(SimCommandContext& c);
};
