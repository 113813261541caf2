#pragma once

#include "CliGroupCommand.h"

// `kx410ctl records`: the panels' stored passage records brought into the database, and old
// passage records removed after a checked backup; the kept whereabouts made again.
class RecordsCommand : public CliGroupCommand
{
public:
    RecordsCommand();

    QString name() const override;
    QString summary() const override;
    int check(const QStringList& arguments) const override;

protected:
    QString helpFooter() const override;

private:
    static int pull(CliContext& context, const CliArguments& args);
    static int alarmReset(CliContext& context, const CliArguments& args);
    static int unread(CliContext& context, const CliArguments& args);
    static int removeOld(CliContext& context, const CliArguments& args);
    static int rebuildWhereabouts(CliContext& context, const CliArguments& args);
};
