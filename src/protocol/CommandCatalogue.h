#pragma once

#include "protocol/CommandInfo.h"

#include <QList>

// The single list of commands with their time-outs, awaited answer lengths, attempts and result
// conventions. Everything that talks to a panel takes its numbers from here.
class CommandCatalogue
{
public:
    static const CommandInfo& info(PanelCommand command);
    static const QList<CommandInfo>& all();
    // The two-letter code, e.g. "NC".
    static QByteArray code(PanelCommand command);
};
