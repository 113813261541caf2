#pragma once

#include "CliArguments.h"
#include "operations/panels/PanelTarget.h"

#include <QList>

class CliContext;

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
};
