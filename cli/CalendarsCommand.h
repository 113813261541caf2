#pragma once

#include "CliGroupCommand.h"

// `kx410ctl calendars`: the group calendars 1..8, kept with the rules of the calendar window and
// sent to the selected panel or to every panel.
class CalendarsCommand : public CliGroupCommand
{
public:
    CalendarsCommand();

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
};
