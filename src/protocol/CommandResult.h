#pragma once

#include "protocol/CommandOutcome.h"

#include <utility>
#include <variant>

// The result of one panel command: its outcome and, for a command that reads something, what was
// read. The data is there only when the command was accepted; otherwise it is Data's default.
// Defined here as a template: each command names its own data type.
template <typename Data = std::monostate> class CommandResult
{
public:
    // An outcome without data: an acknowledged command, or a reading that failed.
    CommandResult(CommandOutcome outcome)
        : m_outcome(outcome)
    { }

    static CommandResult accepted(Data data)
    {
        CommandResult result(CommandOutcome::Accepted);
        result.m_data = std::move(data);
        return result;
    }

    CommandOutcome outcome() const { return m_outcome; }
    bool isAccepted() const { return m_outcome == CommandOutcome::Accepted; }
    const Data& data() const { return m_data; }

    bool operator==(const CommandResult&) const = default;

private:
    CommandOutcome m_outcome;
    Data m_data{};
};
