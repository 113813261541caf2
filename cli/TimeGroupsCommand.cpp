#include "TimeGroupsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliSendPreview.h"
#include "CliTimeGroupOptions.h"
#include "operations/configuration/TimeGroupRepository.h"
#include "operations/configuration/TimeGroupTransfer.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

const CliArguments::Option kNumber{ u"--number"_s, u"N"_s, u"time group number 1..16"_s };
const CliArguments::Option kName{ u"--name"_s, u"NAME"_s, u"the new name"_s };

// Any whole number is taken here; the range is the time group rules' to refuse, in the station's words.
std::optional<int> timeGroupNumber(const QString& command, const CliArguments& args)
{
    QString error;
    const auto n = args.number(u"--number"_s, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), &error);
    if (!n)
        CliConsole::errLine(u"timegroups "_s + command + u": "_s + error);
    return n;
}

int finish(const TimeGroupRepository::Result& result)
{
    return CliContext::exitForChange(result.ok, result.message, result.error);
}

bool readFields(const QString& command, const CliArguments& args, TimeGroupRow* row)
{
    QString error;
    if (CliTimeGroupOptions::apply(args, row, &error))
        return true;
    CliConsole::errLine(u"timegroups "_s + command + u": "_s + error);
    return false;
}
} // namespace

TimeGroupsCommand::TimeGroupsCommand()
{
    addSubCommand({ u"list"_s,
                    {},
                    u"Shows the time groups in number order, each with its settings."_s,
                    {},
                    &TimeGroupsCommand::list });
    addSubCommand({ u"add"_s, u"NAME [--number N] [--type T] [settings]"_s,
                    u"Adds a time group (administrator); without --number it takes the number after the highest."_s,
                    QList<CliArguments::Option>{ kNumber } + CliTimeGroupOptions::options(), &TimeGroupsCommand::add,
                    1 });
    addSubCommand({ u"set"_s, u"--number N [--name NAME] [--type T] [settings]"_s,
                    u"Changes the given fields of a time group (administrator); the others stay."_s,
                    QList<CliArguments::Option>{ kNumber, kName } + CliTimeGroupOptions::options(),
                    &TimeGroupsCommand::set });
    addSubCommand({ u"delete"_s,
                    u"--number N"_s,
                    u"Deletes a time group (administrator; asks first, answer with --yes)."_s,
                    { kNumber },
                    &TimeGroupsCommand::remove });
    addSubCommand({ u"send"_s, u"--panel N | --all-panels | --dry-run"_s,
                    u"Sends every time group to the panel (its other time groups stay), or to every panel\n"
                    "after erasing its time-group memory (administrator; asks first)."_s,
                    CliPanelChoice::options(Allowed::SelectedOrAll)
                        + QList<CliArguments::Option>{ { u"--dry-run"_s,
                                                         {},
                                                         u"list panel by panel whether the time groups changed\n"
                                                         "since the last send, without connecting"_s } },
                    &TimeGroupsCommand::send });
    addSubCommand({ u"erase"_s, u"--panel N"_s, u"Erases the panel's time-group memory (administrator; asks first)."_s,
                    CliPanelChoice::options(Allowed::SelectedOnly), &TimeGroupsCommand::erase });
}

QString TimeGroupsCommand::name() const
{
    return u"timegroups"_s;
}

QString TimeGroupsCommand::summary() const
{
    return u"time groups: list, add, set, delete, send, erase"_s;
}

QString TimeGroupsCommand::helpFooter() const
{
    return u"Restriction types (--type) and the settings each uses:\n"
           "  0  no restriction\n"
           "  1  passage allowed between two dates, 2 refused between them: --start-date, --end-date\n"
           "  3  passage allowed every day between two times, 4 refused between them: --start-time, --end-time\n"
           "  5  weekly plan: --weekdays\n"
           "  6  weekly plan, each day within its own hours: --weekdays, --day-hours\n"
           "  8  monthly plan: --month-days\n"
           "  9  weekly plan within the additional hours valid every day: --weekdays, --extra-window\n"
           "  13 weekly plan within each day's hours or the additional ones: --weekdays, --day-hours, --extra-window\n"
           "  10 canteen, open for --extra-hours from each of up to three --times\n"
           "  11 passage allowed in six whole hours, 12 refused in them: --hours\n"
           "\n"
           "Examples:\n"
           "  kx410ctl --admin-password 1234 timegroups add Mesai --type 3 --start-time 08:00 --end-time 17:30\n"
           "  kx410ctl --admin-password 1234 timegroups set --number 2 --type 6 --weekdays 1,2,3,4,5 "
           "--day-hours 08:00-18:00,5=08:00-12:00\n"
           "  kx410ctl --yes --admin-password 1234 timegroups send --all-panels\n"_s;
}

int TimeGroupsCommand::list(CliContext& context, const CliArguments&)
{
    QString error;
    const QList<TimeGroupRow> rows = TimeGroupRepository(context.db()).list(&error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"timegroups list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"NUMBER  TYPE  NAME"_s);
    for (const TimeGroupRow& row : rows) {
        CliConsole::outLine(QString::number(row.record.number).leftJustified(7) + u' '
                            + QString::number(row.record.restrictionType).leftJustified(5) + u' ' + row.name);
        const QString settings = CliTimeGroupOptions::describe(row);
        if (!settings.isEmpty())
            CliConsole::outLine(u"        "_s + settings);
    }
    return CliExit::Success;
}

int TimeGroupsCommand::add(CliContext& context, const CliArguments& args)
{
    if (args.words().isEmpty()) {
        CliConsole::errLine(u"timegroups add: give the name"_s);
        return CliExit::Usage;
    }
    TimeGroupRow row;
    row.name = args.word(0);
    if (args.has(u"--number"_s)) {
        const auto n = timeGroupNumber(u"add"_s, args);
        if (!n)
            return CliExit::Usage;
        row.record.number = *n;
    }
    if (!readFields(u"add"_s, args, &row))
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const TimeGroupRepository timeGroups(context.db());
    if (!args.has(u"--number"_s)) {
        const TimeGroupRepository::Result next = timeGroups.nextNumber();
        if (!next.ok)
            return finish(next);
        row.record.number = next.number;
    }
    const TimeGroupRepository::Result result = timeGroups.add(row);
    if (result.ok)
        CliConsole::outLine(QString::number(result.number));
    return finish(result);
}

int TimeGroupsCommand::set(CliContext& context, const CliArguments& args)
{
    const auto number = timeGroupNumber(u"set"_s, args);
    if (!number)
        return CliExit::Usage;
    TimeGroupRow probe;
    if (!readFields(u"set"_s, args, &probe))
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const TimeGroupRepository timeGroups(context.db());
    QString error;
    std::optional<TimeGroupRow> row = timeGroups.find(*number, &error);
    if (!row) {
        if (!error.isEmpty()) {
            CliConsole::errLine(u"timegroups set: "_s + error);
            return CliExit::Failed;
        }
        // The repository's own refusal: out of range, or not there.
        TimeGroupRow missing;
        missing.record.number = *number;
        return finish(timeGroups.update(missing));
    }
    if (args.has(u"--name"_s))
        row->name = args.value(u"--name"_s);
    readFields(u"set"_s, args, &*row);
    return finish(timeGroups.update(*row));
}

int TimeGroupsCommand::remove(CliContext& context, const CliArguments& args)
{
    const auto number = timeGroupNumber(u"delete"_s, args);
    if (!number)
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const TimeGroupRepository timeGroups(context.db());
    QString error;
    if (!timeGroups.find(*number, &error)) {
        if (!error.isEmpty()) {
            CliConsole::errLine(u"timegroups delete: "_s + error);
            return CliExit::Failed;
        }
        // Nothing to ask about.
        return finish(timeGroups.remove(*number));
    }
    if (!context.op().ask(TimeGroupRepository::deleteQuestion()))
        return context.op().unansweredQuestion().isEmpty() ? CliExit::Declined : context.exitFor(false);
    return finish(timeGroups.remove(*number));
}

int TimeGroupsCommand::send(CliContext& context, const CliArguments& args)
{
    if (args.has(u"--dry-run"_s))
        return CliSendPreview::sentData(context, SentData::TimeGroups);
    return CliPanelChoice::runWalk(context, args, Allowed::SelectedOrAll, [](OperationContext& c, PanelTarget target) {
        return TimeGroupTransfer(c).send(target);
    });
}

int TimeGroupsCommand::erase(CliContext& context, const CliArguments& args)
{
    return CliPanelChoice::runWalk(context, args, Allowed::SelectedOnly,
                                   [](OperationContext& c, PanelTarget) { return TimeGroupTransfer(c).erase(); });
}
