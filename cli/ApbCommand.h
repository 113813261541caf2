#pragma once

#include "CliGroupCommand.h"

// `kx410ctl apb`: clears the panels' anti-passback memory, for every user or for one.
class ApbCommand : public CliGroupCommand
{
public:
    ApbCommand();

    QString name() const override;
    QString summary() const override;

private:
    static int resetAll(CliContext& context, const CliArguments& args);
    static int resetUser(CliContext& context, const CliArguments& args);
};
