#include "CliPanelDevices.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "operations/panels/PanelClockOperations.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "operations/panels/UhfReaderOperations.h"
#include "operations/panels/ZoneCounterOperations.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString signedSeconds(qint32 seconds)
{
    return (seconds > 0 ? u"+"_s : QString()) + QString::number(seconds);
}

// The zone of --zone; nullopt after printing why.
std::optional<int> zoneOption(const CliArguments& args)
{
    QString error;
    const auto zone = args.number(u"--zone"_s, 1, 2, &error);
    if (!zone)
        CliConsole::errLine(u"panels counter: "_s + error);
    return zone;
}

} // namespace

QList<CliArguments::Option> CliPanelDevices::clockOptions()
{
    return CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOrAll);
}

QList<CliArguments::Option> CliPanelDevices::counterOptions()
{
    return CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOnly)
        + QList<CliArguments::Option>{ { u"--zone"_s, u"1|2"_s, u"the local zone"_s },
                                       { u"--value"_s, u"V"_s, u"set: the new count, below the zone's capacity"_s } };
}

QList<CliArguments::Option> CliPanelDevices::readerOptions()
{
    return CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOnly)
        + QList<CliArguments::Option>{ { u"--reader"_s, u"R"_s, u"the reader (1..4, the reader of that door)"_s },
                                       { u"--set"_s, u"DBM"_s, u"power: the new output power, 15..30 dBm"_s },
                                       { u"--buzzer"_s, u"0|1"_s, u"led: the buzzer setting to write"_s },
                                       { u"--led"_s, u"0|1"_s, u"led: the LED setting to write"_s } };
}

int CliPanelDevices::clock(CliContext& context, const CliArguments& args)
{
    const QString action = args.word(0);
    if (action != u"read"_s && action != u"set"_s) {
        CliConsole::errLine(u"panels clock: give read or set"_s);
        return CliExit::Usage;
    }
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOrAll, &target);
        stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    PanelClockOperations clocks(operation);
    if (action == u"set"_s)
        return context.exitFor(clocks.set(target));
    QList<PanelClockOperations::Reading> readings;
    const WalkResult result = clocks.read(target, &readings);
    for (const PanelClockOperations::Reading& r : std::as_const(readings)) {
        CliConsole::outLine(u"panel "_s + QString::number(r.panelNumber) + u": "_s + r.clock.text + u" offset "_s
                            + (r.offset ? signedSeconds(*r.offset) + u" s"_s : u"-"_s));
    }
    return context.exitFor(result);
}

int CliPanelDevices::counter(CliContext& context, const CliArguments& args)
{
    const QString action = args.word(0);
    if (action != u"read"_s && action != u"set"_s && action != u"clear"_s) {
        CliConsole::errLine(u"panels counter: give read, set or clear"_s);
        return CliExit::Usage;
    }
    const auto zone = zoneOption(args);
    if (!zone)
        return CliExit::Usage;
    if (action == u"set"_s && !args.has(u"--value"_s)) {
        CliConsole::errLine(u"panels counter set: give --value V"_s);
        return CliExit::Usage;
    }
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOnly, &target);
        stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    ZoneCounterOperations counters(operation);
    if (action == u"read"_s) {
        QString count;
        const WalkResult result = counters.read(*zone, &count);
        if (result.succeeded())
            CliConsole::outLine(count);
        return context.exitFor(result);
    }
    if (action == u"clear"_s)
        return context.exitFor(counters.clear(*zone));
    const auto entry = context.roster().selectedEntry();
    const auto slot = entry ? PanelSettingsRepository(context.db()).slot(entry->order) : std::nullopt;
    const QString capacity = slot ? QString::number(slot->settings.localCapacityValue) : QString();
    return context.exitFor(counters.write(*zone, args.value(u"--value"_s), capacity));
}

int CliPanelDevices::reader(CliContext& context, const CliArguments& args)
{
    const QString action = args.word(0);
    if (action != u"power"_s && action != u"led"_s) {
        CliConsole::errLine(u"panels reader: give power or led"_s);
        return CliExit::Usage;
    }
    QString error;
    const auto reader = args.number(u"--reader"_s, 1, 4, &error);
    if (!reader) {
        CliConsole::errLine(u"panels reader: "_s + error);
        return CliExit::Usage;
    }
    const bool writeLed = args.has(u"--buzzer"_s) || args.has(u"--led"_s);
    std::optional<int> buzzer;
    std::optional<int> led;
    if (action == u"led"_s && writeLed) {
        buzzer = args.number(u"--buzzer"_s, 0, 1, &error);
        led = buzzer ? args.number(u"--led"_s, 0, 1, &error) : std::nullopt;
        if (!buzzer || !led) {
            CliConsole::errLine(u"panels reader led: "_s + error + u" (give both --buzzer and --led)"_s);
            return CliExit::Usage;
        }
    }
    PanelTarget target = PanelTarget::Selected;
    if (const int stop = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOnly, &target);
        stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    UhfReaderOperations readers(operation);
    if (action == u"power"_s) {
        if (args.has(u"--set"_s))
            return context.exitFor(readers.setPower(*reader, args.value(u"--set"_s)));
        qint32 power = 0;
        const WalkResult result = readers.readPower(*reader, &power);
        if (result.succeeded())
            CliConsole::outLine(QString::number(power) + u" dBm"_s);
        return context.exitFor(result);
    }
    if (buzzer)
        return context.exitFor(readers.setBuzzerLed(*reader, *buzzer != 0, *led != 0));
    bool buzzerOn = false;
    bool ledOn = false;
    const WalkResult result = readers.readBuzzerLed(*reader, &buzzerOn, &ledOn);
    if (result.succeeded())
        CliConsole::outLine(u"buzzer "_s + QString::number(buzzerOn ? 1 : 0) + u" led "_s
                            + QString::number(ledOn ? 1 : 0));
    return context.exitFor(result);
}
