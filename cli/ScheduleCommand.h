#pragma once

#include "CliGroupCommand.h"

// `kx410ctl schedule`: the two daily transfers (kept in Config.cfg) and the server's periodic
// backup (kept in the database).
class ScheduleCommand : public CliGroupCommand
{
public:
    ScheduleCommand();

    QString name() const override;
    QString summary() const override;
    int check(const QStringList& arguments) const override;

protected:
    QString helpFooter() const override;

private:
    static int show(CliContext& context, const CliArguments& args);
    static int set(CliContext& context, const CliArguments& args);
    // The reason the options of `set` cannot be taken; empty when they can.
    static QString refusal(const CliArguments& args);
};
