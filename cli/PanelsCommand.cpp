#include "PanelsCommand.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelDevices.h"
#include "CliPanelSettings.h"
#include "CliPanelTable.h"
#include "operations/live/StatusListener.h"
#include "operations/live/StatusRefresh.h"
#include "operations/panels/PanelSearch.h"

#include <QEventLoop>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {
QString doorText(int state)
{
    switch (state) {
    case 0:
        return u"closed"_s;
    case 1:
        return u"open"_s;
    default:
        return u"unknown"_s;
    }
}

QString lineText(int state)
{
    switch (state) {
    case 0:
        return u"silent"_s;
    case 1:
        return u"online"_s;
    default:
        return u"unknown"_s;
    }
}

// A port option, or the default when it is not given; false after printing a bad value.
bool portOption(const CliArguments& args, const QString& name, quint16* port)
{
    if (!args.has(name))
        return true;
    QString error;
    const auto value = args.number(name, 0, 65535, &error);
    if (!value) {
        CliConsole::errLine(error);
        return false;
    }
    *port = static_cast<quint16>(*value);
    return true;
}

// A number option stored in `value` when it is given; false after printing "<command>: <reason>"
// for a bad value.
bool numberOption(const CliArguments& args, const QString& command, const QString& name, int low, int high, int* value)
{
    if (!args.has(name))
        return true;
    QString error;
    const auto number = args.number(name, low, high, &error);
    if (!number) {
        CliConsole::errLine(command + u": "_s + error);
        return false;
    }
    *value = *number;
    return true;
}

void printEntries(const QList<PanelEntry>& entries)
{
    CliConsole::outLine(
        u"POS  SERIAL  PANEL  NAME              ADDRESS          PORT   USABLE CLOCK-OFFSET  IN-STEP"_s);
    for (const PanelEntry& e : entries) {
        // The clock's offset from the station's as last read, in seconds.
        const QString offset
            = e.clockOffset ? (*e.clockOffset > 0 ? u"+"_s : QString()) + QString::number(*e.clockOffset) : u"-"_s;
        CliConsole::outLine(QString::number(e.position).leftJustified(4) + u' ' + e.serialText().leftJustified(7) + u' '
                            + QString::number(e.panelNumber).leftJustified(6) + u' ' + e.name.leftJustified(17) + u' '
                            + e.ip.leftJustified(16) + u' ' + QString::number(e.port).leftJustified(6) + u' '
                            + (e.isEligible() ? u"yes"_s : u"no"_s).leftJustified(6) + u' ' + offset.leftJustified(12)
                            + u' ' + (e.outOfStep ? u"no (data changed since the last send)"_s : u"yes"_s));
    }
}
} // namespace

PanelsCommand::PanelsCommand()
{
    addSubCommand({ u"list"_s,
                    {},
                    u"Shows the panel list in list order; USABLE tells whether walks over all panels take it."_s,
                    {},
                    &PanelsCommand::list });
    addSubCommand({ u"add"_s,
                    u"--number N --ip ADDR --port P --serial HEX [--name TEXT] [--order N]"_s,
                    u"Adds a panel to the list (administrator). Its other settings keep their defaults."_s,
                    { { u"--number"_s, u"N"_s, u"panel number 1..64"_s },
                      { u"--ip"_s, u"ADDR"_s, u"the panel's IPv4 address"_s },
                      { u"--port"_s, u"P"_s, u"the panel's TCP port"_s },
                      { u"--serial"_s, u"HEX"_s, u"the panel's serial, 4 hex digits"_s },
                      { u"--name"_s, u"TEXT"_s, u"a name for the lists"_s },
                      { u"--order"_s, u"N"_s, u"list position (default: after the last)"_s } },
                    &PanelsCommand::add });
    addSubCommand({ u"remove"_s,
                    u"--panel N"_s,
                    u"Removes a panel from the system (asks first, administrator): its row is kept with the\n"
                    "values of an empty slot and no longer counts as in use."_s,
                    { { u"--panel"_s, u"N"_s, u"the panel number"_s } },
                    &CliPanelSettings::remove });
    addSubCommand({ u"settings"_s,
                    u"show|set|send --panel N [--udp] [SETTING VALUE ...] [--door D DOOR-SETTING VALUE ...]"_s,
                    u"show: prints a panel's settings as the options that set them.\n"
                    "set: stores the settings given (administrator, asks first); the panel number and serial are\n"
                    "refused when wrong, relay times, zones, capacity, block and detector times corrected.\n"
                    "send: stores as set does, then sends the settings to the panel (asks first), by TCP or with\n"
                    "--udp as a broadcast to the broadcast address."_s,
                    CliPanelSettings::options(), &CliPanelSettings::settings, 1 });
    addSubCommand({ u"clock"_s, u"read|set --panel N | --all-panels"_s,
                    u"read: shows the panels' clocks and keeps each offset from the station's clock (see list).\n"
                    "set: sets the panels' clocks to the station's clock in one walk (asks first)."_s,
                    CliPanelDevices::clockOptions(), &CliPanelDevices::clock, 1 });
    addSubCommand({ u"counter"_s, u"read|set|clear --panel N --zone 1|2 [--value V]"_s,
                    u"The vehicle/person counter of a local zone: read it, set it below the zone's capacity or\n"
                    "clear it (set and clear: administrator, asks first)."_s,
                    CliPanelDevices::counterOptions(), &CliPanelDevices::counter, 1 });
    addSubCommand({ u"reader"_s, u"power|led --panel N --reader R [--set DBM | --buzzer 0|1 --led 0|1]"_s,
                    u"A UHF reader's output power or its buzzer and LED: read, or write with --set or\n"
                    "--buzzer/--led (administrator, asks first)."_s,
                    CliPanelDevices::readerOptions(), &CliPanelDevices::reader, 1 });
    addSubCommand({ u"search"_s,
                    u"[--seconds N] [--search-port P] [--local-port P]"_s,
                    u"Finds the panels on the network by broadcast and, when any answers, replaces the panel\n"
                    "list with them (server station, administrator, asks first)."_s,
                    { { u"--seconds"_s, u"N"_s, u"how long answers are collected (default 3)"_s },
                      { u"--search-port"_s, u"P"_s, u"the panels' search port (default 4113)"_s },
                      { u"--local-port"_s, u"P"_s, u"local port the answers come to (default 4114, 0 any)"_s } },
                    &PanelsCommand::search });
    addSubCommand({ u"status"_s,
                    u"[--wait MS] [--status-port P] [--local-port P]"_s,
                    u"Asks every panel for its door status by broadcast and shows the doors and reader lines of\n"
                    "the usable panels; a panel that does not answer stays unknown."_s,
                    { { u"--wait"_s, u"MS"_s, u"how long answers are collected (default 1500)"_s },
                      { u"--status-port"_s, u"P"_s, u"the panels' status port (default 11000)"_s },
                      { u"--local-port"_s, u"P"_s, u"local port the answers come to (default 11001, 0 any)"_s } },
                    &PanelsCommand::status });
}

QString PanelsCommand::name() const
{
    return u"panels"_s;
}

QString PanelsCommand::summary() const
{
    return u"the panel list: list, add, remove, settings, clock, counter, reader, search, status"_s;
}

QString PanelsCommand::helpFooter() const
{
    return u"Examples:\n"
           "  kx410ctl --admin-password 1234 panels add --number 1 --ip 127.0.0.1 --port 5001 --serial 1001\n"
           "  kx410ctl --broadcast 127.0.0.1 panels status\n"
           "  kx410ctl --yes panels settings send --panel 1 --name Otopark --door 2 --direction 1\n"
           "  kx410ctl --yes panels clock set --all-panels\n"_s;
}

int PanelsCommand::list(CliContext& context, const CliArguments&)
{
    printEntries(context.roster().entries());
    return CliExit::Success;
}

int PanelsCommand::add(CliContext& context, const CliArguments& args)
{
    QString error;
    CliPanelTable::NewPanel panel;
    const auto number = args.number(u"--number"_s, 1, 64, &error);
    const auto port = number ? args.number(u"--port"_s, 1, 65535, &error) : std::nullopt;
    if (!number || !port || !args.has(u"--ip"_s) || !args.has(u"--serial"_s)) {
        CliConsole::errLine(u"panels add: "_s + (error.isEmpty() ? u"--ip and --serial are required"_s : error));
        return CliExit::Usage;
    }
    bool hexOk = false;
    panel.number = *number;
    panel.port = *port;
    panel.ip = args.value(u"--ip"_s).trimmed();
    panel.serial = args.value(u"--serial"_s).toInt(&hexOk, 16);
    panel.name = args.value(u"--name"_s);
    if (!hexOk) {
        CliConsole::errLine(u"panels add: --serial takes hex digits such as 12AB"_s);
        return CliExit::Usage;
    }
    if (!numberOption(args, u"panels add"_s, u"--order"_s, 1, 9999, &panel.order))
        return CliExit::Usage;
    if (!context.requireAdministrator())
        return CliExit::NeedsAnswer;
    CliPanelTable table(context.db());
    if (!table.add(panel, &error)) {
        CliConsole::errLine(u"panels add: "_s + error);
        return CliExit::Failed;
    }
    context.roster().load(context.db());
    CliConsole::outLine(u"panel "_s + QString::number(panel.number) + u" added"_s);
    return CliExit::Success;
}

int PanelsCommand::search(CliContext& context, const CliArguments& args)
{
    PanelSearch::Timing timing;
    if (!numberOption(args, u"panels search"_s, u"--seconds"_s, 1, 60, &timing.ticks))
        return CliExit::Usage;
    OperationContext operation = context.operationContext();
    if (!portOption(args, u"--search-port"_s, &operation.udp.searchPanelPort)
        || !portOption(args, u"--local-port"_s, &operation.udp.searchLocalPort))
        return CliExit::Usage;
    QList<SearchAnswer> found;
    const WalkResult result = PanelSearch(operation, timing).run(&found);
    if (result.completed()) {
        CliConsole::errLine(QString::number(found.size()) + u" panel(s) answered"_s);
        if (!found.isEmpty()) {
            context.roster().load(context.db());
            printEntries(context.roster().entries());
        }
    }
    return context.exitFor(result);
}

int PanelsCommand::status(CliContext& context, const CliArguments& args)
{
    QString error;
    int waitMs = 1500;
    if (!numberOption(args, u"panels status"_s, u"--wait"_s, 0, 600000, &waitMs))
        return CliExit::Usage;
    UdpSettings udp = context.udp();
    if (!portOption(args, u"--status-port"_s, &udp.statusPanelPort)
        || !portOption(args, u"--local-port"_s, &udp.statusLocalPort))
        return CliExit::Usage;

    StatusListener listener(context.roster(), udp);
    if (!listener.start(&error)) {
        CliConsole::errLine(u"panels status: "_s + error);
        return CliExit::Failed;
    }
    if (!StatusRefresh::run(context.roster(), listener)) {
        CliConsole::errLine(u"panels status: the status request could not be sent"_s);
        return CliExit::Failed;
    }
    QEventLoop loop;
    QTimer::singleShot(waitMs, &loop, &QEventLoop::quit);
    loop.exec();
    listener.stop();

    CliConsole::outLine(u"PANEL  DOOR1    DOOR2    DOOR3    DOOR4    LINE1    LINE2    LINE3    LINE4"_s);
    int answered = 0;
    for (const PanelEntry& e : context.roster().entries()) {
        if (!e.isEligible())
            continue;
        QString doors;
        QString lines;
        bool known = false;
        for (int d = 1; d <= 4; ++d) {
            const DoorStatusTable::Cell cell = context.roster().doorStatus().cell(e.position, d);
            known = known || cell.connectionState != PanelStatus::LineUnknown;
            doors += doorText(cell.doorState).leftJustified(8) + u' ';
            lines += lineText(cell.connectionState).leftJustified(8) + u' ';
        }
        answered += known ? 1 : 0;
        CliConsole::outLine(QString(QString::number(e.panelNumber).leftJustified(6) + u' ' + doors + lines).trimmed());
    }
    CliConsole::errLine(QString::number(answered) + u" panel(s) answered"_s);
    return CliExit::Success;
}
