#pragma once

#include "CliGroupCommand.h"

// `kx410ctl records`: the panels' stored passage records brought into the database.
class RecordsCommand : public CliGroupCommand
{
public:
    RecordsCommand();

    QString name() const override;
    QString summary() const override;

protected:
    QString helpFooter() const override;

private:
    static int pull(CliContext& context, const CliArguments& args);
    static int alarmReset(CliContext& context, const CliArguments& args);
    static int unread(CliContext& context, const CliArguments& args);
};
