#pragma once

#include "CliGroupCommand.h"

// `kx410ctl zones`: the global zones' numbers and names, with the rules of the zone window.
class ZonesCommand : public CliGroupCommand
{
public:
    ZonesCommand();

    QString name() const override;
    QString summary() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int add(CliContext& context, const CliArguments& args);
    static int rename(CliContext& context, const CliArguments& args);
    static int remove(CliContext& context, const CliArguments& args);
};
