#include "CountersCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliUserChoice.h"
#include "operations/doors/CounterOperations.h"

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

const CliArguments::Option kGroup{ u"--group"_s, u"N"_s, u"access group number"_s };

QList<CliArguments::Option> withPanels(Allowed allowed, const QList<CliArguments::Option>& more = {})
{
    return CliPanelChoice::options(allowed) + more;
}

// Chooses the panels, then runs the operation; the exit status follows how it ended. A clearing
// operation has its rights before its question.
int onPanels(CliContext& context, const CliArguments& args, Allowed allowed,
             const std::function<WalkResult(CounterOperations&, PanelTarget)>& operation, bool clearing = false)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, allowed, &target); stop >= 0)
        return stop;
    if (const int stop = clearing ? context.rightsFirst() : -1; stop >= 0)
        return stop;
    OperationContext operationContext = context.operationContext();
    CounterOperations counters(operationContext);
    return context.exitFor(operation(counters, target));
}

std::optional<int> groupNumber(const CliArguments& args, const QString& command)
{
    QString error;
    const auto group = args.number(u"--group"_s, 1, 1280, &error);
    if (!group)
        CliConsole::errLine(command + u": "_s + error);
    return group;
}
} // namespace

CountersCommand::CountersCommand()
{
    addSubCommand({ u"erase-all"_s, u"--panel N | --all-panels"_s,
                    u"Erases every access counter of the panels (about 5 seconds a panel)."_s,
                    withPanels(Allowed::SelectedOrAll), &CountersCommand::eraseAll });
    addSubCommand({ u"erase-user"_s, u"--user ID --panel N | --all-panels"_s,
                    u"Erases one user's access counters in the panels."_s,
                    withPanels(Allowed::SelectedOrAll, { CliUserChoice::option(u"the user's ID"_s) }),
                    &CountersCommand::eraseUser });
    addSubCommand({ u"read-user"_s, u"--user ID --panel N"_s,
                    u"Reads one user's access counters from a panel, with the limits of the user's group."_s,
                    withPanels(Allowed::SelectedOnly, { CliUserChoice::option(u"the user's ID"_s) }),
                    &CountersCommand::readUser });
    addSubCommand({ u"record-count"_s, u"--panel N"_s,
                    u"Prints how many passage records a panel holds in its offline memory."_s,
                    withPanels(Allowed::SelectedOnly), &CountersCommand::recordCount });
    addSubCommand({ u"erase-records"_s, u"--panel N | --all-panels"_s,
                    u"Erases the panels' offline passage memory (records not fetched are lost)."_s,
                    withPanels(Allowed::SelectedOrAll), &CountersCommand::eraseRecords });
    addSubCommand({ u"inside"_s, u"--group N --panel N"_s,
                    u"Reads how many members of an access group are inside, from a panel."_s,
                    withPanels(Allowed::SelectedOnly, { kGroup }), &CountersCommand::inside });
    addSubCommand({ u"clear-inside"_s, u"--panel N [--group N]"_s,
                    u"Clears the inside count of one access group, or of every group without --group."_s,
                    withPanels(Allowed::SelectedOnly, { kGroup }), &CountersCommand::clearInside });
}

QString CountersCommand::name() const
{
    return u"counters"_s;
}

QString CountersCommand::summary() const
{
    return u"access counters, inside counts, offline record memory"_s;
}

int CountersCommand::eraseAll(CliContext& context, const CliArguments& args)
{
    return onPanels(
        context, args, Allowed::SelectedOrAll,
        [](CounterOperations& c, PanelTarget target) { return c.eraseAllAccessCounters(target); }, true);
}

int CountersCommand::eraseUser(CliContext& context, const CliArguments& args)
{
    if (!args.has(u"--user"_s)) {
        CliConsole::errLine(u"counters erase-user: give --user ID"_s);
        return CliExit::Usage;
    }
    const qint64 recordNo = CliUserChoice::recordNo(context, args);
    if (recordNo == 0)
        return CliExit::Failed;
    return onPanels(
        context, args, Allowed::SelectedOrAll,
        [recordNo](CounterOperations& c, PanelTarget target) { return c.eraseUserAccessCounter(target, recordNo); },
        true);
}

int CountersCommand::readUser(CliContext& context, const CliArguments& args)
{
    if (!args.has(u"--user"_s)) {
        CliConsole::errLine(u"counters read-user: give --user ID"_s);
        return CliExit::Usage;
    }
    const qint64 recordNo = CliUserChoice::recordNo(context, args);
    if (recordNo == 0)
        return CliExit::Failed;
    return onPanels(context, args, Allowed::SelectedOnly,
                    [recordNo](CounterOperations& c, PanelTarget) { return c.readUserAccessCounter(recordNo); });
}

int CountersCommand::recordCount(CliContext& context, const CliArguments& args)
{
    qint32 count = -1;
    const int status = onPanels(context, args, Allowed::SelectedOnly,
                                [&count](CounterOperations& c, PanelTarget) { return c.readRecordCount(&count); });
    if (status == CliExit::Success)
        CliConsole::outLine(QString::number(count));
    return status;
}

int CountersCommand::eraseRecords(CliContext& context, const CliArguments& args)
{
    return onPanels(
        context, args, Allowed::SelectedOrAll,
        [](CounterOperations& c, PanelTarget target) { return c.eraseRecordMemory(target); }, true);
}

int CountersCommand::inside(CliContext& context, const CliArguments& args)
{
    const auto group = groupNumber(args, u"counters inside"_s);
    if (!group)
        return CliExit::Usage;
    return onPanels(context, args, Allowed::SelectedOnly,
                    [&group](CounterOperations& c, PanelTarget) { return c.readGroupInsideCount(*group); });
}

int CountersCommand::clearInside(CliContext& context, const CliArguments& args)
{
    if (!args.has(u"--group"_s)) {
        return onPanels(
            context, args, Allowed::SelectedOnly,
            [](CounterOperations& c, PanelTarget) { return c.clearAllInsideCounts(); }, true);
    }
    const auto group = groupNumber(args, u"counters clear-inside"_s);
    if (!group)
        return CliExit::Usage;
    return onPanels(
        context, args, Allowed::SelectedOnly,
        [&group](CounterOperations& c, PanelTarget) { return c.clearGroupInsideCount(*group); }, true);
}
