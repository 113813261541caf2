#include "RecordsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "operations/LiveAlarmReset.h"
#include "operations/RecordRetrieval.h"

using namespace Qt::Literals::StringLiterals;

RecordsCommand::RecordsCommand()
{
    QList<CliArguments::Option> pullOptions = CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOrAll);
    pullOptions.append({ u"--erase"_s, {}, u"erase each panel's memory once its records are stored"_s });
    addSubCommand({ u"pull"_s, u"--panel N | --all-panels [--erase]"_s,
                    u"Fetches the passage records the panels stored and adds the new ones to the database."_s,
                    pullOptions, &RecordsCommand::pull });
    addSubCommand({ u"alarm-reset"_s,
                    QString(),
                    u"Sends the fire and alarm reset to every panel (a broadcast to the --broadcast address)."_s,
                    {},
                    &RecordsCommand::alarmReset });
}

QString RecordsCommand::name() const
{
    return u"records"_s;
}

QString RecordsCommand::summary() const
{
    return u"fetch the panels' stored passage records; alarm reset"_s;
}

QString RecordsCommand::helpFooter() const
{
    return u"Records already in the database are skipped, so pulling twice adds nothing. With --erase a\n"
           "panel is erased only after all of its records are committed, and never after a broken or\n"
           "capped download. Prints \"downloaded=N added=N duplicates=N erased=N\" on standard output.\n"
           "Examples:\n"
           "  kx410ctl --yes --admin-password 1234 records pull --all-panels\n"
           "  kx410ctl --yes --admin-password 1234 records pull --panel 3 --erase\n"_s;
}

int RecordsCommand::pull(CliContext& context, const CliArguments& args)
{
    RecordRetrieval::Options options;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOrAll, &options.target);
        stop >= 0)
        return stop;
    options.eraseAfter = args.has(u"--erase"_s);
    OperationContext operation = context.operationContext();
    const RecordRetrieval::Result result = RecordRetrieval::run(operation, options);
    CliConsole::outLine(u"downloaded=%1 added=%2 duplicates=%3 erased=%4"_s.arg(result.downloaded)
                            .arg(result.added)
                            .arg(result.duplicates)
                            .arg(result.panelsErased));
    return context.exitFor(result.walk);
}

int RecordsCommand::alarmReset(CliContext& context, const CliArguments&)
{
    OperationContext operation = context.operationContext();
    return context.exitFor(LiveAlarmReset::run(operation));
}
