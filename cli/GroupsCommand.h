#pragma once

#include "CliGroupCommand.h"

// `kx410ctl groups`: the access groups' numbers and names.
class GroupsCommand : public CliGroupCommand
{
public:
    GroupsCommand();

    QString name() const override;
    QString summary() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int add(CliContext& context, const CliArguments& args);
};
