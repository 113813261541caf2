#pragma once

#include "CliGroupCommand.h"

// `kx410ctl programme`: a panel's programmed door operations, 16 slots a weekday, shown, changed,
// copied from Monday, sent to the panel and read back from it.
class ProgrammeCommand : public CliGroupCommand
{
public:
    ProgrammeCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int show(CliContext& context, const CliArguments& args);
    static int set(CliContext& context, const CliArguments& args);
    static int copyMonday(CliContext& context, const CliArguments& args);
    static int send(CliContext& context, const CliArguments& args);
    static int receive(CliContext& context, const CliArguments& args);
};
