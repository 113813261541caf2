#pragma once

#include "CliGroupCommand.h"

// `kx410ctl groups`: the access groups, what each may do on each panel, and sending them.
class GroupsCommand : public CliGroupCommand
{
public:
    GroupsCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int add(CliContext& context, const CliArguments& args);
    static int set(CliContext& context, const CliArguments& args);
    static int remove(CliContext& context, const CliArguments& args);
    static int doors(CliContext& context, const CliArguments& args);
    static int send(CliContext& context, const CliArguments& args);
    static int erase(CliContext& context, const CliArguments& args);
};
