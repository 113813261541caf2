#pragma once

// What a panel made of one command, as far as the station can tell from the answer.
enum class CommandOutcome
{
    // This panel answered the command and took it (or gave the data asked for).
    Accepted,
    // This panel answered the command but did not take it, or had nothing to give.
    Refused,
    // Something arrived in time, but not this panel's answer to the command.
    OtherCode,
    // Nothing arrived in time (or nothing could be sent).
    NoAnswer,
};
