#pragma once

#include "CliGroupCommand.h"

// `kx410ctl timegroups`: the time groups kept with the rules of the time groups page, sent to the
// selected panel or to every panel, and erased from a panel.
class TimeGroupsCommand : public CliGroupCommand
{
public:
    TimeGroupsCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int add(CliContext& context, const CliArguments& args);
    static int set(CliContext& context, const CliArguments& args);
    static int remove(CliContext& context, const CliArguments& args);
    static int send(CliContext& context, const CliArguments& args);
    static int erase(CliContext& context, const CliArguments& args);
};
