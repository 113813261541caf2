#pragma once

#include "CliGroupCommand.h"

// `kx410ctl panels`: the panel list, adding and removing panels, their settings, clocks, zone
// counters and UHF readers, the panel search and the door status refresh.
class PanelsCommand : public CliGroupCommand
{
public:
    PanelsCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int add(CliContext& context, const CliArguments& args);
    static int search(CliContext& context, const CliArguments& args);
    static int status(CliContext& context, const CliArguments& args);
};
