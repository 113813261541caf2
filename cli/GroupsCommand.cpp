#include "GroupsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliGroupOptions.h"
#include "CliPanelChoice.h"
#include "CliSendPreview.h"
#include "operations/configuration/GroupRepository.h"
#include "operations/configuration/GroupTransfer.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

const CliArguments::Option kNumber{ u"--number"_s, u"N"_s, u"group number 1..1280"_s };
const CliArguments::Option kName{ u"--name"_s, u"NAME"_s, u"the new name"_s };
const CliArguments::Option kPanel{ u"--panel"_s, u"N"_s, u"the panel whose doors are set"_s };

// Any whole number is read here; the range is the group rules' to refuse, in the station's words.
std::optional<int> readNumber(const QString& command, const CliArguments& args)
{
    QString error;
    std::optional<int> n;
    if (args.has(u"--number"_s))
        n = args.number(u"--number"_s, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), &error);
    else if (const auto word
             = CliArguments::toNumber(args.word(0), std::numeric_limits<int>::min(), std::numeric_limits<int>::max()))
        n = int(*word);
    else
        error = u"give the group number"_s;
    if (!n)
        CliConsole::errLine(u"groups "_s + command + u": "_s + error);
    return n;
}

// A number out of range is a mistake on the command line; it is told in the station's words.
bool numberInRange(int number)
{
    if (GroupRepository::inRange(number))
        return true;
    CliContext::printError(Message(u"Grup numarası 1-1280 arasında sayısal bir ifade olmalıdır!"_s));
    return false;
}

int finish(const GroupRepository::Result& result)
{
    return CliContext::exitForChange(result.ok, result.message, result.error);
}

int usage(const QString& command, const QString& error)
{
    CliConsole::errLine(u"groups "_s + command + u": "_s + error);
    return CliExit::Usage;
}

// The group or why it is not there.
std::optional<GroupMasterRow> existing(const GroupRepository& groups, int number, int* exitCode)
{
    QString error;
    std::optional<GroupMasterRow> row = groups.find(number, &error);
    if (row)
        return row;
    if (!error.isEmpty()) {
        CliConsole::errLine(error);
        *exitCode = CliExit::Failed;
    } else {
        *exitCode = finish({ false, number, GroupRepository::notFound(number), {} });
    }
    return std::nullopt;
}
} // namespace

GroupsCommand::GroupsCommand()
{
    addSubCommand({ u"list"_s,
                    {},
                    u"Shows the access groups in number order, each with its settings and the panels whose doors it\n"
                    "may pass, as the options that set them."_s,
                    {},
                    &GroupsCommand::list });
    addSubCommand({ u"add"_s, u"NAME [--number N] [settings]"_s,
                    u"Adds an access group (administrator) with every door closed; without --number it takes the\n"
                    "number after the highest."_s,
                    QList<CliArguments::Option>{ kNumber } + CliGroupOptions::masterOptions(), &GroupsCommand::add,
                    1 });
    addSubCommand({ u"set"_s, u"--number N [--name NAME] [settings]"_s,
                    u"Changes the given settings of a group (administrator); the others stay."_s,
                    QList<CliArguments::Option>{ kNumber, kName } + CliGroupOptions::masterOptions(),
                    &GroupsCommand::set });
    addSubCommand({ u"delete"_s,
                    u"--number N"_s,
                    u"Deletes a group and what it may do on each panel (administrator; asks first, answer with\n"
                    "--yes)."_s,
                    { kNumber },
                    &GroupsCommand::remove });
    addSubCommand({ u"doors"_s, u"GROUP --panel N [--doors 1100] [--time-groups 1,1,0,0] [--zones 1,1,1,1]"_s,
                    u"Sets which doors of the panel the group may pass, each door's time group and global zone\n"
                    "(administrator); what is not given stays."_s,
                    QList<CliArguments::Option>{ kPanel } + CliGroupOptions::doorOptions(), &GroupsCommand::doors, 1 });
    addSubCommand({ u"send"_s, u"--panel N | --all-panels | --dry-run"_s,
                    u"Sends every group to the panel, or to every panel (administrator; asks first, and about a\n"
                    "group a panel does not take)."_s,
                    CliPanelChoice::options(Allowed::SelectedOrAll)
                        + QList<CliArguments::Option>{ { u"--dry-run"_s,
                                                         {},
                                                         u"list panel by panel whether the groups changed since\n"
                                                         "the last send, without connecting"_s } },
                    &GroupsCommand::send });
    addSubCommand({ u"erase"_s, u"--panel N"_s, u"Erases the panel's group memory (administrator; asks first)."_s,
                    CliPanelChoice::options(Allowed::SelectedOnly), &GroupsCommand::erase });
}

QString GroupsCommand::name() const
{
    return u"groups"_s;
}

QString GroupsCommand::summary() const
{
    return u"access groups: list, add, set, delete, doors, send, erase"_s;
}

QString GroupsCommand::helpFooter() const
{
    return u"Counters over what a panel takes are kept as given and sent as no limit (over 255 passages,\n"
           "over 9999 inside); a zone outside 1..99 is sent as zone 1.\n"
           "\n"
           "Examples:\n"
           "  kx410ctl --admin-password 1234 groups add Ofis --access-count 2 --anti-passback-off on\n"
           "  kx410ctl --admin-password 1234 groups doors 1 --panel 1 --doors 1100 --time-groups 1,1,0,0 "
           "--zones 1,1,1,1\n"
           "  kx410ctl --yes --admin-password 1234 groups send --all-panels\n"_s;
}

int GroupsCommand::list(CliContext& context, const CliArguments&)
{
    QString error;
    const GroupRepository groups(context.db());
    const QList<GroupMasterRow> rows = groups.masters(&error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"groups list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"NUMBER  NAME"_s);
    for (const GroupMasterRow& row : rows) {
        CliConsole::outLine(QString::number(row.number).leftJustified(7) + u' ' + row.name.trimmed());
        const QString settings = CliGroupOptions::describe(row);
        if (!settings.isEmpty())
            CliConsole::outLine(u"        "_s + settings);
        for (const GroupDetailRow& detail : groups.details(row.number, &error)) {
            const QString doors = CliGroupOptions::describe(detail);
            if (!doors.isEmpty())
                CliConsole::outLine(u"        "_s + doors);
        }
    }
    if (!error.isEmpty()) {
        CliConsole::errLine(u"groups list: "_s + error);
        return CliExit::Failed;
    }
    return CliExit::Success;
}

int GroupsCommand::add(CliContext& context, const CliArguments& args)
{
    if (args.words().isEmpty())
        return usage(u"add"_s, u"give the name"_s);
    GroupMasterRow row;
    row.name = args.word(0);
    if (args.has(u"--number"_s)) {
        const auto n = readNumber(u"add"_s, args);
        if (!n)
            return CliExit::Usage;
        if (!numberInRange(*n))
            return CliExit::Usage;
        row.number = *n;
    }
    QString error;
    if (!CliGroupOptions::applyMaster(args, &row, &error))
        return usage(u"add"_s, error);
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const GroupRepository groups(context.db());
    if (!args.has(u"--number"_s)) {
        const GroupRepository::Result next = groups.nextNumber();
        if (!next.ok)
            return finish(next);
        row.number = next.number;
    }
    const GroupRepository::Result result = groups.add(row);
    if (result.ok)
        CliConsole::outLine(QString::number(result.number));
    return finish(result);
}

int GroupsCommand::set(CliContext& context, const CliArguments& args)
{
    const auto number = readNumber(u"set"_s, args);
    if (!number)
        return CliExit::Usage;
    GroupMasterRow probe;
    QString error;
    if (!CliGroupOptions::applyMaster(args, &probe, &error))
        return usage(u"set"_s, error);
    if (!numberInRange(*number))
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const GroupRepository groups(context.db());
    int exitCode = CliExit::Success;
    std::optional<GroupMasterRow> row = existing(groups, *number, &exitCode);
    if (!row)
        return exitCode;
    if (args.has(u"--name"_s))
        row->name = args.value(u"--name"_s);
    CliGroupOptions::applyMaster(args, &*row, &error);
    return finish(groups.update(*row));
}

int GroupsCommand::remove(CliContext& context, const CliArguments& args)
{
    const auto number = readNumber(u"delete"_s, args);
    if (!number)
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const GroupRepository groups(context.db());
    int exitCode = CliExit::Success;
    if (!existing(groups, *number, &exitCode))
        return exitCode;
    if (!context.op().ask(GroupRepository::deleteQuestion()))
        return context.op().unansweredQuestion().isEmpty() ? CliExit::Declined : context.exitFor(false);
    return finish(groups.remove(*number));
}

int GroupsCommand::doors(CliContext& context, const CliArguments& args)
{
    const auto number = readNumber(u"doors"_s, args);
    if (!number)
        return CliExit::Usage;
    QString error;
    const auto panel = args.number(u"--panel"_s, 1, GroupRepository::PanelSlots, &error);
    if (!panel)
        return usage(u"doors"_s, error);
    GroupDetailRow probe;
    if (!CliGroupOptions::applyDoors(args, &probe, &error))
        return usage(u"doors"_s, error);
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const GroupRepository groups(context.db());
    int exitCode = CliExit::Success;
    const std::optional<GroupMasterRow> group = existing(groups, *number, &exitCode);
    if (!group)
        return exitCode;
    std::optional<GroupDetailRow> row;
    for (const GroupDetailRow& detail : groups.details(*number, &error)) {
        if (detail.panelNo == *panel)
            row = detail;
    }
    if (!row) {
        // A panel in use that the group has no row for yet (an older group) gets one.
        for (const GroupDetailRow& fresh : groups.freshDetails(&error)) {
            if (fresh.panelNo == *panel)
                row = fresh;
        }
    }
    if (!row) {
        if (!error.isEmpty())
            CliConsole::errLine(error);
        return finish({ false, *number, Message(u"Panel veritabanında bulunamadı."_s), {} });
    }
    row->groupNo = *number;
    CliGroupOptions::applyDoors(args, &*row, &error);
    return finish(groups.update(*group, { *row }));
}

int GroupsCommand::send(CliContext& context, const CliArguments& args)
{
    if (args.has(u"--dry-run"_s))
        return CliSendPreview::sentData(context, SentData::Groups);
    return CliPanelChoice::runWalk(context, args, Allowed::SelectedOrAll, [](OperationContext& c, PanelTarget target) {
        return GroupTransfer(c).send(target);
    });
}

int GroupsCommand::erase(CliContext& context, const CliArguments& args)
{
    return CliPanelChoice::runWalk(context, args, Allowed::SelectedOnly,
                                   [](OperationContext& c, PanelTarget) { return GroupTransfer(c).erase(); });
}
