#pragma once

#include "CliGroupCommand.h"

// `kx410ctl permission`: the daily passage approvals of a group's members, changed one by one or
// all at once, sent to a panel; and the time of day at which every approval falls back to no.
class PermissionCommand : public CliGroupCommand
{
public:
    PermissionCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int set(CliContext& context, const CliArguments& args);
    static int all(CliContext& context, const CliArguments& args);
    static int none(CliContext& context, const CliArguments& args);
    static int send(CliContext& context, const CliArguments& args);
    static int reset(CliContext& context, const CliArguments& args);
};
