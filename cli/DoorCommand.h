#pragma once

#include "CliGroupCommand.h"

// `kx410ctl door`: doors and relays driven by hand, and a manual passage granted from the station.
class DoorCommand : public CliGroupCommand
{
public:
    DoorCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int process(CliContext& context, const CliArguments& args, int action);
    static int manual(CliContext& context, const CliArguments& args);
};
