#include "ProgrammeCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "CliTimeText.h"
#include "operations/configuration/ProgrammedSlotRepository.h"
#include "operations/configuration/ProgrammedSlotTransfer.h"
#include "operations/panels/PanelRoster.h"

using namespace Qt::Literals::StringLiterals;

namespace {
using Allowed = CliPanelChoice::Allowed;

const CliArguments::Option kDay{ u"--day"_s, u"D"_s, u"weekday 1..7, 1 = Monday"_s };
const CliArguments::Option kSlot{ u"--slot"_s, u"S"_s, u"slot 1..16"_s };

QList<CliArguments::Option> withPanel(const QList<CliArguments::Option>& more)
{
    return CliPanelChoice::options(Allowed::SelectedOnly) + more;
}

// Selects the panel given with --panel and hands back its number; -1 when the command may go on.
int selectPanel(CliContext& context, const CliArguments& args, int* panel)
{
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, Allowed::SelectedOnly, &target); stop >= 0)
        return stop;
    *panel = context.roster().selectedEntry()->panelNumber;
    return -1;
}

int finish(const ProgrammedSlotRepository::Result& result)
{
    return CliContext::exitForChange(result.ok, result.message, result.error);
}

QString places(const std::array<bool, 8>& on)
{
    QString text;
    for (bool place : on)
        text += place ? u'1' : u'0';
    return text;
}

// "1,3", "all" or "none".
std::optional<std::array<bool, 4>> fourOrNone(const QString& text)
{
    if (text.trimmed() == u"none"_s)
        return std::array<bool, 4>{};
    return CliArguments::fourPlaces(text);
}
} // namespace

ProgrammeCommand::ProgrammeCommand()
{
    addSubCommand({ u"show"_s, u"--panel N [--day D]"_s,
                    u"Shows the panel's slots (made, all inactive, the first time the panel is shown)."_s,
                    withPanel({ kDay }), &ProgrammeCommand::show });
    addSubCommand({ u"set"_s,
                    u"--panel N --day D --slot S [--active on|off] [--start HH:MM] [--end HH:MM] "
                    "[--doors L] [--relays L]"_s,
                    u"Changes the given fields of one slot (administrator); doors and relays 5..8 stay."_s,
                    withPanel({ kDay,
                                kSlot,
                                { u"--active"_s, u"on|off"_s, u"the slot is in use"_s },
                                { u"--start"_s, u"HH:MM"_s, u"start time"_s },
                                { u"--end"_s, u"HH:MM"_s, u"end time"_s },
                                { u"--doors"_s, u"L"_s, u"doors 1..4 driven: \"1,3\", \"all\" or \"none\""_s },
                                { u"--relays"_s, u"L"_s, u"relays 1..4 driven: \"2\", \"all\" or \"none\""_s } }),
                    &ProgrammeCommand::set });
    addSubCommand({ u"copy-monday"_s, u"--panel N --day D"_s,
                    u"Copies Monday's slots onto the weekday, slot by slot (administrator; not for Monday)."_s,
                    withPanel({ kDay }), &ProgrammeCommand::copyMonday });
    addSubCommand({ u"send"_s, u"--panel N"_s, u"Sends every slot of the panel (administrator; asks first)."_s,
                    withPanel({}), &ProgrammeCommand::send });
    addSubCommand({ u"receive"_s, u"--panel N"_s,
                    u"Reads every slot back from the panel into the table (administrator; asks first)."_s,
                    withPanel({}), &ProgrammeCommand::receive });
}

QString ProgrammeCommand::name() const
{
    return u"programme"_s;
}

QString ProgrammeCommand::summary() const
{
    return u"programmed door operations: show, set, copy-monday, send, receive"_s;
}

QString ProgrammeCommand::helpFooter() const
{
    return u"Each weekday has 16 slots; between its start and end an active slot holds its doors open and\n"
           "its relays on. Only doors and relays 1..4 reach the panel.\n"
           "\n"
           "Examples:\n"
           "  kx410ctl --admin-password 1234 programme set --panel 1 --day 1 --slot 1 --active on "
           "--start 08:00 --end 08:15 --doors 1,2 --relays none\n"
           "  kx410ctl --admin-password 1234 programme copy-monday --panel 1 --day 2\n"
           "  kx410ctl --yes --admin-password 1234 programme send --panel 1\n"_s;
}

int ProgrammeCommand::show(CliContext& context, const CliArguments& args)
{
    int panel = 0;
    if (const int stop = selectPanel(context, args, &panel); stop >= 0)
        return stop;
    int day = 0;
    if (args.has(u"--day"_s)) {
        QString error;
        const auto d = args.number(u"--day"_s, 1, 7, &error);
        if (!d) {
            CliConsole::errLine(u"programme show: "_s + error);
            return CliExit::Usage;
        }
        day = *d;
    }
    ProgrammedSlotRepository programme(context.db());
    if (const ProgrammedSlotRepository::Result made = programme.ensurePanel(panel); !made.ok)
        return finish(made);
    QString error;
    const QList<ProgrammedSlot> rows = day > 0 ? programme.day(panel, day, &error) : programme.panel(panel, &error);
    if (!error.isEmpty()) {
        CliConsole::errLine(u"programme show: "_s + error);
        return CliExit::Failed;
    }
    CliConsole::outLine(u"DAY  SLOT  ACTIVE  START  END    DOORS     RELAYS"_s);
    for (const ProgrammedSlot& s : rows) {
        CliConsole::outLine(
            QString::number(s.weekday).leftJustified(4) + u' ' + QString::number(s.slot).leftJustified(5) + u' '
            + QString(s.active ? u"on"_s : u"off"_s).leftJustified(7) + u' ' + s.start.toString(u"HH:mm"_s) + u"  "_s
            + s.end.toString(u"HH:mm"_s) + u"  "_s + places(s.doors) + u"  "_s + places(s.relays));
    }
    return CliExit::Success;
}

int ProgrammeCommand::set(CliContext& context, const CliArguments& args)
{
    QString error;
    const auto day = args.number(u"--day"_s, 1, 7, &error);
    const auto slot = day ? args.number(u"--slot"_s, 1, ProgrammedSlotRepository::SlotsPerDay, &error) : std::nullopt;
    if (!day || !slot) {
        CliConsole::errLine(u"programme set: "_s + error);
        return CliExit::Usage;
    }
    std::optional<bool> active;
    std::optional<QTime> start;
    std::optional<QTime> end;
    std::optional<std::array<bool, 4>> doors;
    std::optional<std::array<bool, 4>> relays;
    if (args.has(u"--active"_s) && !(active = CliTimeText::onOff(args.value(u"--active"_s), &error)))
        error = u"--active: "_s + error;
    else if (args.has(u"--start"_s) && !(start = CliTimeText::timeOfDay(args.value(u"--start"_s), &error)))
        error = u"--start: "_s + error;
    else if (args.has(u"--end"_s) && !(end = CliTimeText::timeOfDay(args.value(u"--end"_s), &error)))
        error = u"--end: "_s + error;
    else if (args.has(u"--doors"_s) && !(doors = fourOrNone(args.value(u"--doors"_s))))
        error = u"--doors is a list of 1..4, \"all\" or \"none\""_s;
    else if (args.has(u"--relays"_s) && !(relays = fourOrNone(args.value(u"--relays"_s))))
        error = u"--relays is a list of 1..4, \"all\" or \"none\""_s;
    else
        error.clear();
    if (!error.isEmpty()) {
        CliConsole::errLine(u"programme set: "_s + error);
        return CliExit::Usage;
    }
    int panel = 0;
    if (const int stop = selectPanel(context, args, &panel); stop >= 0)
        return stop;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    ProgrammedSlotRepository programme(context.db());
    if (const ProgrammedSlotRepository::Result made = programme.ensurePanel(panel); !made.ok)
        return finish(made);
    ProgrammedSlot row;
    row.weekday = *day;
    row.slot = *slot;
    row.start = QTime(0, 0);
    row.end = QTime(0, 0);
    for (const ProgrammedSlot& stored : programme.day(panel, *day)) {
        if (stored.slot == *slot)
            row = stored;
    }
    if (active)
        row.active = *active;
    if (start)
        row.start = *start;
    if (end)
        row.end = *end;
    for (size_t i = 0; i < 4; ++i) {
        if (doors)
            row.doors[i] = (*doors)[i];
        if (relays)
            row.relays[i] = (*relays)[i];
    }
    return finish(programme.store(panel, { row }));
}

int ProgrammeCommand::copyMonday(CliContext& context, const CliArguments& args)
{
    QString error;
    const auto day = args.number(u"--day"_s, 2, 7, &error);
    if (!day) {
        CliConsole::errLine(u"programme copy-monday: "_s + error);
        return CliExit::Usage;
    }
    int panel = 0;
    if (const int stop = selectPanel(context, args, &panel); stop >= 0)
        return stop;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    ProgrammedSlotRepository programme(context.db());
    if (const ProgrammedSlotRepository::Result made = programme.ensurePanel(panel); !made.ok)
        return finish(made);
    return finish(programme.copyFromMonday(panel, *day));
}

int ProgrammeCommand::send(CliContext& context, const CliArguments& args)
{
    int panel = 0;
    if (const int stop = selectPanel(context, args, &panel); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(ProgrammedSlotTransfer(operation).send());
}

int ProgrammeCommand::receive(CliContext& context, const CliArguments& args)
{
    int panel = 0;
    if (const int stop = selectPanel(context, args, &panel); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    return context.exitFor(ProgrammedSlotTransfer(operation).receive());
}
