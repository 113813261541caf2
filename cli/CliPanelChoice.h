#pragma once

#include "CliArguments.h"
#include "operations/panels/PanelTarget.h"

#include <QList>
#include <functional>

class CliContext;
class OperationContext;
struct WalkResult;

// The target of a panel operation on the command line: --panel N (the panel with that number
// becomes the selected panel) or --all-panels (every usable panel of the list, in list order).
class CliPanelChoice
{
public:
    enum class Allowed
    {
        SelectedOnly,
        SelectedOrAll
    };

    static QList<CliArguments::Option> options(Allowed allowed);

    // Reads the choice and selects the panel. Returns -1 when the operation may go on, else the
    // exit status after printing why (no choice, unknown panel, a panel a client cannot reach).
    static int apply(CliContext& context, const CliArguments& args, Allowed allowed, PanelTarget* target);

    using Walk = std::function<WalkResult(OperationContext&, PanelTarget)>;
    // The road of a send or an erase: the choice applied, the rights asked for before the walk's
    // question, the walk run and its exit status given.
    static int runWalk(CliContext& context, const CliArguments& args, Allowed allowed, const Walk& walk);
};
