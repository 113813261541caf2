#pragma once

class SimCommandContext;

// The panel's side of the access rule commands: groups, time groups, calendars, programmed slots
// and the settings record.
class SimRuleCommands
{
public:
    // False when the code is not one of these commands.
    static bool handle(SimCommandContext& c);
};
