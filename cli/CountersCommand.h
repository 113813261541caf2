#pragma once

#include "CliGroupCommand.h"

// `kx410ctl counters`: access counters, inside counts and the offline record memory of the panels.
class CountersCommand : public CliGroupCommand
{
public:
    CountersCommand();

    QString name() const override;
    QString summary() const override;

private:
    static int eraseAll(CliContext& context, const CliArguments& args);
    static int eraseUser(CliContext& context, const CliArguments& args);
    static int readUser(CliContext& context, const CliArguments& args);
    static int recordCount(CliContext& context, const CliArguments& args);
    static int eraseRecords(CliContext& context, const CliArguments& args);
    static int inside(CliContext& context, const CliArguments& args);
    static int clearInside(CliContext& context, const CliArguments& args);
};
