#pragma once

#include "CliGroupCommand.h"

// `kx410ctl users`: the card holders in the database and in the panels' card memory.
class UsersCommand : public CliGroupCommand
{
public:
    UsersCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int list(CliContext& context, const CliArguments& args);
    static int add(CliContext& context, const CliArguments& args);
    static int remove(CliContext& context, const CliArguments& args);
    static int importCsv(CliContext& context, const CliArguments& args);
    static int send(CliContext& context, const CliArguments& args);
    static int deleteFromPanels(CliContext& context, const CliArguments& args);
    static int erase(CliContext& context, const CliArguments& args);
    static int receive(CliContext& context, const CliArguments& args);
};
