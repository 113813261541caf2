#pragma once

#include "CliArguments.h"

#include <QList>

class CliContext;

// `kx410ctl panels settings show|set|send` and `panels remove`: the panel settings window's
// roads on the command line, with its questions, checks and messages. The settings are named by
// options (`--name`, `--relay-times 5,5,5,5`, `--door 2 --direction out`); numbers the window
// corrects silently are corrected here the same way.
class CliPanelSettings
{
public:
    // The options of `panels settings` (every field, --door, --udp, --panel).
    static QList<CliArguments::Option> options();
    static int settings(CliContext& context, const CliArguments& args);
    static int remove(CliContext& context, const CliArguments& args);
};
