#include "RecordsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliParallelOptions.h"
#include "CliTimeText.h"
#include "operations/backup/BackupOperations.h"
#include "operations/live/LiveAlarmReset.h"
#include "operations/records/RecordRetrieval.h"
#include "operations/records/UnreadRecordStore.h"
#include "operations/records/WhereaboutsRepair.h"

using namespace Qt::Literals::StringLiterals;

RecordsCommand::RecordsCommand()
{
    QList<CliArguments::Option> pullOptions = CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOrAll);
    pullOptions.append({ u"--erase"_s, {}, u"erase each panel's memory once its records are stored"_s });
    pullOptions.append(CliParallelOptions::options());
    addSubCommand({ u"pull"_s, u"--panel N | --all-panels [--erase] [--parallel N [--give-up-after K]]"_s,
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
    addSubCommand({ u"delete"_s,
                    u"--before DATE"_s,
                    u"Backs the database up, checks the backup, then removes the passage records dated before DATE\n"
                    "(YYYY-MM-DD). Server station only; asks first and needs administrator rights."_s,
                    { { u"--before"_s, u"DATE"_s, u"remove the passages dated before this day"_s } },
                    &RecordsCommand::removeOld });
    addSubCommand({ u"whereabouts"_s,
                    QString(),
                    u"Makes each person's last passage per zone and panel (what \"who is inside now\" reads)\n"
                    "again from every stored passage; a repair, never needed in normal work."_s,
                    {},
                    &RecordsCommand::rebuildWhereabouts });
}

QString RecordsCommand::name() const
{
    return u"records"_s;
}

QString RecordsCommand::summary() const
{
    return u"fetch the panels' stored passage records; list what could not be read; alarm reset"_s;
}

int RecordsCommand::check(const QStringList& arguments) const
{
    if (const int stop = CliGroupCommand::check(arguments); stop >= 0)
        return stop;
    if (arguments.value(0) != u"delete"_s)
        return -1;
    CliArguments args;
    QString error;
    args.parse(arguments.mid(1), { { u"--before"_s, u"DATE"_s, {} } }, &error);
    if (!args.has(u"--before"_s))
        error = u"--before is required"_s;
    else
        CliTimeText::date(args.value(u"--before"_s), &error);
    if (error.isEmpty())
        return -1;
    CliConsole::errLine(u"records delete: "_s + error);
    return CliExit::Usage;
}

QString RecordsCommand::helpFooter() const
{
    return u"Records already in the database are skipped, so pulling twice adds nothing. With --erase a\n"
           "panel is erased only after all of its records are committed, and never after a broken or\n"
           "capped download, a download with unreadable pieces, or while the panel's record count is still\n"
           "moving. Prints \"downloaded=N added=N duplicates=N erased=N unread=N\" on standard output;\n"
           "unread pieces are kept and listed by `records unread`.\n"
           "`records whereabouts` prints \"whereabouts=N\", the rows made.\n"
           "`records delete` removes nothing unless the backup it makes first holds every passage it\n"
           "removes; it prints \"backup=FILE removed=N\".\n"
           "Examples:\n"
           "  kx410ctl --yes --admin-password 1234 records pull --all-panels\n"
           "  kx410ctl --yes --admin-password 1234 records pull --panel 3 --erase\n"
           "  kx410ctl --yes --admin-password 1234 records delete --before 2026-01-01\n"_s;
}

int RecordsCommand::pull(CliContext& context, const CliArguments& args)
{
    RecordRetrieval::Options options;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOrAll, &options.target);
        stop >= 0)
        return stop;
    options.eraseAfter = args.has(u"--erase"_s);
    QString error;
    options.parallel = CliParallelOptions::parse(args, options.target == PanelTarget::All, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"records pull: "_s + error);
        return CliExit::Usage;
    }
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
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
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

int RecordsCommand::removeOld(CliContext& context, const CliArguments& args)
{
    QString error;
    const std::optional<QDate> before = CliTimeText::date(args.value(u"--before"_s), &error);
    if (!before) {
        CliConsole::errLine(error);
        return CliExit::Usage;
    }
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    const BackupOperations::Result result
        = BackupOperations(operation, context.folder().backupFolder()).removeBefore(*before);
    switch (result.outcome) {
    case BackupOperations::Outcome::Done:
        CliConsole::outLine(u"backup=%1 removed=%2"_s.arg(result.backup.backupPath).arg(result.backup.removed));
        return CliExit::Success;
    case BackupOperations::Outcome::Declined:
    case BackupOperations::Outcome::NoRights:
        return context.exitFor(WalkResult{ result.outcome == BackupOperations::Outcome::Declined
                                               ? WalkResult::Outcome::Declined
                                               : WalkResult::Outcome::NoRights });
    case BackupOperations::Outcome::Refused:
    case BackupOperations::Outcome::Failed:
        break;
    }
    return CliExit::Failed;
}

int RecordsCommand::rebuildWhereabouts(CliContext& context, const CliArguments&)
{
    QString error;
    const qint64 made = WhereaboutsRepair::run(context.db(), &error);
    if (made < 0) {
        CliConsole::errLine(u"records whereabouts: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"whereabouts=%1"_s.arg(made));
    return CliExit::Success;
}
