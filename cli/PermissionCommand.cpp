#include "PermissionCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliTimeText.h"
#include "operations/configuration/DailyPermissionRepository.h"
#include "operations/configuration/DailyPermissionTransfer.h"
#include "operations/schedule/ApprovalResetRepository.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {
const CliArguments::Option kGroup{ u"--group"_s, u"G"_s, u"access group number"_s };

// The group of --group; the station's refusal for 0 and below. -1 when the command may go on.
int readGroup(const QString& command, const CliArguments& args, int* group)
{
    QString error;
    const auto n = args.number(u"--group"_s, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), &error);
    if (!n) {
        CliConsole::errLine(u"permission "_s + command + u": "_s + error);
        return CliExit::Usage;
    }
    if (*n <= 0) {
        CliContext::printError(Message(u"Grup numarası 0'dan büyük olmalıdır"_s));
        return CliExit::Failed;
    }
    *group = *n;
    return -1;
}

int setAll(CliContext& context, const CliArguments& args, bool approved)
{
    int group = 0;
    if (const int stop = readGroup(approved ? u"all"_s : u"none"_s, args, &group); stop >= 0)
        return stop;
    QString error;
    const bool ok = DailyPermissionRepository(context.db()).setAll(group, approved, &error);
    return CliContext::exitForChange(ok, Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}
} // namespace

PermissionCommand::PermissionCommand()
{
    addSubCommand({ u"list"_s,
                    u"--group G"_s,
                    u"Shows the group's members and their approval in ID order."_s,
                    { kGroup },
                    &PermissionCommand::list });
    addSubCommand({ u"set"_s,
                    u"--group G --user ID --approved on|off"_s,
                    u"Approves one member of the group for the day, or takes the approval back."_s,
                    { kGroup,
                      { u"--user"_s, u"ID"_s, u"the member's user number"_s },
                      { u"--approved"_s, u"on|off"_s, u"approved or not"_s } },
                    &PermissionCommand::set });
    addSubCommand(
        { u"all"_s, u"--group G"_s, u"Approves every member of the group."_s, { kGroup }, &PermissionCommand::all });
    addSubCommand(
        { u"none"_s, u"--group G"_s, u"Takes every member's approval back."_s, { kGroup }, &PermissionCommand::none });
    addSubCommand(
        { u"send"_s, u"--group G --panel N"_s,
          u"Sends the members' approvals to the panel (administrator; asks first)."_s,
          QList<CliArguments::Option>{ kGroup } + CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOnly),
          &PermissionCommand::send });
    addSubCommand({ u"reset"_s,
                    u"--at HH:MM|off [--to-panels on|off]"_s,
                    u"Sets the time of day at which a server station takes every approval back, and whether\n"
                    "it then tells every panel (administrator). Without options: shows the setting."_s,
                    { { u"--at"_s, u"HH:MM|off"_s, u"the time of day, or off"_s },
                      { u"--to-panels"_s, u"on|off"_s, u"send the members of approval groups as not approved"_s } },
                    &PermissionCommand::reset });
}

QString PermissionCommand::name() const
{
    return u"permission"_s;
}

QString PermissionCommand::summary() const
{
    return u"daily passage approvals: list, set, all, none, send, reset"_s;
}

QString PermissionCommand::helpFooter() const
{
    return u"Members of a group that needs the daily approval pass only while approved on the panel.\n"
           "\n"
           "Examples:\n"
           "  kx410ctl permission all --group 7\n"
           "  kx410ctl --yes --admin-password 1234 permission send --group 7 --panel 1\n"
           "  kx410ctl --admin-password 1234 permission reset --at 03:00 --to-panels on\n"_s;
}

int PermissionCommand::list(CliContext& context, const CliArguments& args)
{
    int group = 0;
    if (const int stop = readGroup(u"list"_s, args, &group); stop >= 0)
        return stop;
    QString error;
    const QList<DailyPermissionRepository::Member> members
        = DailyPermissionRepository(context.db()).members(group, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"permission list: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"ID     CARD        APPROVED  NAME"_s);
    for (const DailyPermissionRepository::Member& m : members) {
        CliConsole::outLine(QString::number(m.id).leftJustified(6) + u' ' + QString::number(m.card).leftJustified(11)
                            + u' ' + QString(m.approved ? u"yes"_s : u"no"_s).leftJustified(9) + u' ' + m.name + u' '
                            + m.surname);
    }
    return CliExit::Success;
}

int PermissionCommand::set(CliContext& context, const CliArguments& args)
{
    int group = 0;
    if (const int stop = readGroup(u"set"_s, args, &group); stop >= 0)
        return stop;
    QString error;
    const auto id = args.number(u"--user"_s, 1, std::numeric_limits<int>::max(), &error);
    const auto approved = id ? CliTimeText::onOff(args.value(u"--approved"_s), &error) : std::nullopt;
    if (!id || !approved) {
        CliConsole::errLine(u"permission set: "_s + error);
        return CliExit::Usage;
    }
    const DailyPermissionRepository approvals(context.db());
    QList<DailyPermissionRepository::Member> members = approvals.members(group, &error);
    auto member = std::find_if(members.begin(), members.end(),
                               [&](const DailyPermissionRepository::Member& m) { return m.id == *id; });
    if (member == members.end()) {
        if (!error.isEmpty()) {
            CliConsole::errLine(u"permission set: "_s + error);
            return CliExit::Failed;
        }
        CliConsole::errLine(u"permission set: user "_s + QString::number(*id) + u" is not a member of group "_s
                            + QString::number(group));
        return CliExit::Failed;
    }
    member->approved = *approved;
    const bool ok = approvals.store({ *member }, &error);
    return CliContext::exitForChange(ok, Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}

int PermissionCommand::all(CliContext& context, const CliArguments& args)
{
    return setAll(context, args, true);
}

int PermissionCommand::none(CliContext& context, const CliArguments& args)
{
    return setAll(context, args, false);
}

int PermissionCommand::send(CliContext& context, const CliArguments& args)
{
    int group = 0;
    if (const int stop = readGroup(u"send"_s, args, &group); stop >= 0)
        return stop;
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOnly, &target);
        stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(DailyPermissionTransfer(operation).send(group));
}

int PermissionCommand::reset(CliContext& context, const CliArguments& args)
{
    ApprovalResetRepository settings(context.db());
    ApprovalResetPlan plan;
    QString error;
    if (!settings.load(&plan, &error)) {
        CliConsole::errLine(u"permission reset: "_s + error);
        return CliExit::Failed;
    }
    if (!args.has(u"--at"_s) && !args.has(u"--to-panels"_s)) {
        CliConsole::outLine(u"reset: "_s + (plan.on ? plan.time.toString(u"HH:mm"_s) : u"off"_s) + u", to panels: "_s
                            + (plan.toPanels ? u"on"_s : u"off"_s));
        return CliExit::Success;
    }
    if (args.has(u"--at"_s)) {
        const QString at = args.value(u"--at"_s).trimmed();
        if (at == u"off"_s) {
            plan.on = false;
        } else {
            const auto time = CliTimeText::timeOfDay(at, &error);
            if (!time) {
                CliConsole::errLine(u"permission reset: --at: "_s + error);
                return CliExit::Usage;
            }
            plan.on = true;
            plan.time = *time;
        }
    }
    if (args.has(u"--to-panels"_s)) {
        const auto toPanels = CliTimeText::onOff(args.value(u"--to-panels"_s), &error);
        if (!toPanels) {
            CliConsole::errLine(u"permission reset: --to-panels: "_s + error);
            return CliExit::Usage;
        }
        plan.toPanels = *toPanels;
    }
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    const bool ok = settings.save(plan, &error);
    return CliContext::exitForChange(ok, Message(u"Hata, İşlem tamamlanamadı!"_s), error);
}
