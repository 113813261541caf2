#include "DoorCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliUserChoice.h"
#include "operations/doors/DoorOperations.h"

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

// The door actions in the order the panels number them.
constexpr int kTrigger = 0;
constexpr int kOpen = 1;
constexpr int kClose = 2;

const CliArguments::Option kDoors{ u"--doors"_s, u"LIST"_s, u"doors 1..4, e.g. 1,3 or all"_s };
const CliArguments::Option kRelays{ u"--relays"_s, u"LIST"_s, u"panel master relays 1..4, e.g. 2 or all"_s };

// --doors or --relays given as a list; false after printing a bad one.
bool places(const CliArguments& args, const QString& option, std::array<bool, 4>* target)
{
    if (!args.has(option))
        return true;
    const auto parsed = CliArguments::fourPlaces(args.value(option));
    if (!parsed) {
        CliConsole::errLine(option + u" takes numbers 1..4 separated by commas, or all"_s);
        return false;
    }
    *target = *parsed;
    return true;
}
} // namespace

DoorCommand::DoorCommand()
{
    const QList<CliArguments::Option> processOptions = CliPanelChoice::options(Allowed::SelectedOrAll)
        + QList<CliArguments::Option>{ kDoors,
                                       kRelays,
                                       { u"--master-relay"_s, {}, u"also drive each chosen door's master relay"_s },
                                       { u"--reader"_s, {}, u"signal on the chosen doors' readers"_s } };
    const QString synopsis = u"--panel N | --all-panels (--doors LIST | --relays LIST) [--master-relay] [--reader]"_s;
    addSubCommand({ u"trigger"_s, synopsis, u"Opens the doors or relays for one pass (administrator)."_s,
                    processOptions, [](CliContext& c, const CliArguments& a) { return process(c, a, kTrigger); } });
    addSubCommand({ u"open"_s, synopsis, u"Holds the doors or relays open (administrator)."_s, processOptions,
                    [](CliContext& c, const CliArguments& a) { return process(c, a, kOpen); } });
    addSubCommand({ u"close"_s, synopsis, u"Holds the doors or relays closed (administrator)."_s, processOptions,
                    [](CliContext& c, const CliArguments& a) { return process(c, a, kClose); } });
    addSubCommand(
        { u"manual"_s, u"--panel N --door D (--user ID | --visit N) [--with-relay] [--relays LIST]"_s,
          u"Grants one passage by hand at a door of the panel and stores it with the passage records."_s,
          CliPanelChoice::options(Allowed::SelectedOnly)
              + QList<CliArguments::Option>{ { u"--door"_s, u"D"_s, u"the door 1..4"_s },
                                             CliUserChoice::option(u"the person passing"_s),
                                             { u"--visit"_s, u"N"_s, u"the visit record of a visitor passing"_s },
                                             { u"--with-relay"_s, {}, u"drive the door's master relay too"_s },
                                             kRelays },
          &DoorCommand::manual });
}

QString DoorCommand::name() const
{
    return u"door"_s;
}

QString DoorCommand::summary() const
{
    return u"doors and relays by hand: trigger, open, close, manual"_s;
}

QString DoorCommand::helpFooter() const
{
    return u"Examples:\n"
           "  kx410ctl --yes --admin-password 1234 door trigger --panel 1 --doors 1,2\n"
           "  kx410ctl --yes --admin-password 1234 door close --all-panels --relays all\n"
           "  kx410ctl --yes door manual --panel 1 --door 2 --user 7\n"_s;
}

int DoorCommand::process(CliContext& context, const CliArguments& args, int action)
{
    DoorRequest request;
    request.action = action;
    if (!places(args, u"--doors"_s, &request.doors) || !places(args, u"--relays"_s, &request.relays))
        return CliExit::Usage;
    request.masterRelay = args.has(u"--master-relay"_s);
    request.reader = args.has(u"--reader"_s);
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOrAll, &target); stop >= 0)
        return stop;
    // With nothing chosen the operation itself says which choice is missing.
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(DoorOperations(operation).doorProcess(target, request));
}

int DoorCommand::manual(CliContext& context, const CliArguments& args)
{
    QString error;
    ManualAccessRequest request;
    const auto door = args.number(u"--door"_s, 1, 4, &error);
    if (!door) {
        CliConsole::errLine(u"door manual: "_s + error);
        return CliExit::Usage;
    }
    request.door = *door;
    request.withRelay = args.has(u"--with-relay"_s);
    if (!places(args, u"--relays"_s, &request.relays))
        return CliExit::Usage;
    if (args.has(u"--user"_s) == args.has(u"--visit"_s)) {
        CliConsole::errLine(u"door manual: give --user ID or --visit N"_s);
        return CliExit::Usage;
    }
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOnly, &target); stop >= 0)
        return stop;
    if (args.has(u"--user"_s)) {
        request.userRecordNo = CliUserChoice::recordNo(context, args);
        if (request.userRecordNo == 0)
            return CliExit::Failed;
    } else {
        const auto visit = CliArguments::toNumber(args.value(u"--visit"_s), 1, std::numeric_limits<qint64>::max());
        if (!visit) {
            CliConsole::errLine(u"door manual: --visit takes a visit record number"_s);
            return CliExit::Usage;
        }
        request.visitNo = *visit;
    }
    OperationContext operation = context.operationContext();
    return context.exitFor(DoorOperations(operation).manualAccess(request));
}
