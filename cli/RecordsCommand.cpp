#include "RecordsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "operations/live/LiveAlarmReset.h"
#include "operations/records/RecordRetrieval.h"
#include "operations/records/UnreadRecordStore.h"

using namespace Qt::Literals::StringLiterals;

RecordsCommand::RecordsCommand()
{
    QList<CliArguments::Option> pullOptions = CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOrAll);
    pullOptions.append({ u"--erase"_s, {}, u"erase each panel's memory once its records are stored"_s });
    addSubCommand({ u"pull"_s, u"--panel N | --all-panels [--erase]"_s,
                    u"Fetches the passage records the panels stored and adds the new ones to the database."_s,
                    pullOptions, &RecordsCommand::pull });
    addSubCommand({ u"unread"_s,
                    u"[--panel N]"_s,
                    u"Lists what downloads brought that could not be stored as passages, newest first."_s,
                    { { u"--panel"_s, u"N"_s, u"only what panel N sent"_s } },
                    &RecordsCommand::unread });
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
    return u"fetch the panels' stored passage records; list what could not be read; alarm reset"_s;
}

QString RecordsCommand::helpFooter() const
{
    return u"Records already in the database are skipped, so pulling twice adds nothing. With --erase a\n"
           "panel is erased only after all of its records are committed, and never after a broken or\n"
           "capped download, a download with unreadable pieces, or while the panel's record count is still\n"
           "moving. Prints \"downloaded=N added=N duplicates=N erased=N unread=N\" on standard output;\n"
           "unread pieces are kept and listed by `records unread`.\n"
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
    CliConsole::outLine(u"downloaded=%1 added=%2 duplicates=%3 erased=%4 unread=%5"_s.arg(result.downloaded)
                            .arg(result.added)
                            .arg(result.duplicates)
                            .arg(result.panelsErased)
                            .arg(result.keptBack));
    const int exit = context.exitFor(result.walk);
    // Asked to erase and a panel kept its memory: not everything asked for happened.
    if (exit == CliExit::Success && result.panelsNotErased > 0)
        return CliExit::Failed;
    return exit;
}

int RecordsCommand::alarmReset(CliContext& context, const CliArguments&)
{
    OperationContext operation = context.operationContext();
    return context.exitFor(LiveAlarmReset::run(operation));
}

int RecordsCommand::unread(CliContext& context, const CliArguments& args)
{
    int panel = 0;
    if (args.has(u"--panel"_s)) {
        QString error;
        const auto number = args.number(u"--panel"_s, 1, 255, &error);
        if (!number) {
            CliConsole::errLine(error);
            return CliExit::Usage;
        }
        panel = *number;
    }
    QString error;
    const QList<UnreadRecordStore::Row> rows = UnreadRecordStore(context.db()).rows(panel, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(error);
        return CliExit::Failed;
    }
    for (const UnreadRecordStore::Row& row : rows)
        CliConsole::outLine(u"%1\t%2\t%3\t%4"_s.arg(row.panel).arg(row.received.toString(u"yyyy-MM-dd HH:mm:ss"_s),
                                                                   row.reason, row.text));
    return CliExit::Success;
}
