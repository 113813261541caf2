#pragma once

#include "CliArguments.h"
#include "operations/panels/ParallelWalk.h"

#include <QList>
#include <optional>

// The options of an unattended walk over all panels: --parallel N and --give-up-after K.
class CliParallelOptions
{
public:
    static QList<CliArguments::Option> options();
    // The walk asked for, or empty when --parallel is not given. `error` is set (and nothing
    // returned) for a bad value or a walk that is not over all panels.
    static std::optional<ParallelWalk::Options> parse(const CliArguments& args, bool allPanels, QString* error);
};
