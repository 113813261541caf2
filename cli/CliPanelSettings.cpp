#include "CliPanelSettings.h"

#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "CliPanelChoice.h"
#include "operations/panels/PanelChoices.h"
#include "operations/panels/PanelModel.h"
#include "operations/panels/PanelSettingsOperations.h"
#include "operations/panels/PanelSettingsRepository.h"
#include "operations/panels/RepeatBlockTime.h"

#include <QHostAddress>
#include <QRegularExpression>
#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

using Door = PanelSettingsRecord::Door;

// One setting on the command line: how it is given and shown. `apply` returns the reason a value
// is refused (empty when taken); `door` is the door chosen with --door for per-door settings.
struct Field
{
    QString option;
    QString valueName;
    QString help;
    bool perDoor = false;
    std::function<QString(PanelSettingsInput&, Door*, const QString&)> apply;
    std::function<QString(const PanelSettingsInput&, const Door*)> show;
};

std::optional<int> whole(const QString& text, int low, int high)
{
    const auto value = CliArguments::toNumber(text, low, high);
    return value ? std::optional<int>(static_cast<int>(*value)) : std::nullopt;
}

QString range(int low, int high)
{
    return u"takes "_s + QString::number(low) + u".."_s + QString::number(high);
}

QString codes(const QList<PanelChoices::Choice>& choices)
{
    QStringList list;
    for (const PanelChoices::Choice& c : choices)
        list << QString::number(c.code);
    return u"takes one of "_s + list.join(u", "_s);
}

// An on/off setting.
Field flag(const QString& option, const QString& help, qint32 PanelSettingsRecord::*member)
{
    return { option,
             u"0|1"_s,
             help,
             false,
             [member](PanelSettingsInput& in, Door*, const QString& v) {
                 const auto value = whole(v, 0, 1);
                 if (!value)
                     return range(0, 1);
                 in.values.settings.*member = *value;
                 return QString();
             },
             [member](const PanelSettingsInput& in, const Door*) {
                 return QString::number(in.values.settings.*member != 0 ? 1 : 0);
             } };
}

// A setting with a list of codes.
Field choice(const QString& option, const QString& help, qint32 PanelSettingsRecord::*member,
             const QList<PanelChoices::Choice>& choices)
{
    return { option,
             u"CODE"_s,
             help,
             false,
             [member, choices](PanelSettingsInput& in, Door*, const QString& v) {
                 const auto value = whole(v, 0, 99);
                 if (!value || !PanelChoices::contains(choices, *value))
                     return codes(choices);
                 in.values.settings.*member = *value;
                 return QString();
             },
             [member](const PanelSettingsInput& in, const Door*) {
                 return QString::number(in.values.settings.*member);
             } };
}

// A number the save corrects silently: given as typed.
Field typed(const QString& option, const QString& help, QString PanelSettingsInput::*member,
            const QString& valueName = u"N"_s)
{
    return { option,
             valueName,
             help,
             false,
             [member](PanelSettingsInput& in, Door*, const QString& v) {
                 in.*member = v;
                 return QString();
             },
             [member](const PanelSettingsInput& in, const Door*) { return in.*member; } };
}

std::optional<std::array<qint32, 4>> octets(const QString& text)
{
    // Four dotted numbers exactly: the address parser would also take short forms like "127.1".
    static const QRegularExpression dotted(u"^\\d{1,3}(\\.\\d{1,3}){3}$"_s);
    if (!dotted.match(text.trimmed()).hasMatch())
        return std::nullopt;
    std::array<qint32, 4> result{};
    const QStringList parts = text.trimmed().split(u'.');
    for (int i = 0; i < 4; ++i) {
        result[i] = parts.at(i).toInt();
        if (result[i] > 255)
            return std::nullopt;
    }
    return result;
}

Field address(const QString& option, const QString& help, std::array<qint32, 4> PanelSettingsRecord::*member)
{
    return { option,
             u"A.B.C.D"_s,
             help,
             false,
             [member](PanelSettingsInput& in, Door*, const QString& v) {
                 const auto value = octets(v);
                 if (!value)
                     return u"takes an IPv4 address a.b.c.d"_s;
                 in.values.settings.*member = *value;
                 return QString();
             },
             [member](const PanelSettingsInput& in, const Door*) {
                 QStringList parts;
                 for (qint32 octet : in.values.settings.*member)
                     parts << QString::number(octet);
                 return parts.join(u'.');
             } };
}

// A per-door setting with a range, checked against the panel's model where it matters.
Field doorNumber(const QString& option, const QString& valueName, const QString& help, qint32 Door::*member,
                 std::function<QString(const PanelSettingsInput&, const Door&, int)> check)
{
    return { option,
             valueName,
             help,
             true,
             [member, check](PanelSettingsInput& in, Door* door, const QString& v) {
                 const auto value = whole(v, 0, 99);
                 if (!value)
                     return u"takes a whole number"_s;
                 const QString reason = check(in, *door, *value);
                 if (!reason.isEmpty())
                     return reason;
                 door->*member = *value;
                 return QString();
             },
             [member](const PanelSettingsInput&, const Door* door) { return QString::number(door->*member); } };
}

const PanelModel& modelOf(const PanelSettingsInput& in)
{
    return PanelModel::byCode(in.values.settings.model);
}

QString listed(const QList<PanelChoices::Choice>& choices, int value)
{
    return PanelChoices::contains(choices, value) ? QString() : codes(choices);
}

QList<Field> panelFields()
{
    using S = PanelSettingsRecord;
    using I = PanelSettingsInput;
    QList<PanelChoices::Choice> models;
    for (const PanelModel& m : PanelModel::all())
        models.append({ m.code, m.name });
    QList<Field> fields;
    fields << typed(u"--number"_s, u"panel number 1..64"_s, &I::panelNumber)
           << typed(u"--serial"_s, u"serial, 1 to 4 hex digits"_s, &I::serial, u"HEX"_s)
           << Field{ u"--name"_s,
                     u"TEXT"_s,
                     u"panel name (17 characters)"_s,
                     false,
                     [](I& in, Door*, const QString& v) {
                         in.values.settings.name = v.left(17);
                         return QString();
                     },
                     [](const I& in, const Door*) { return in.values.settings.name; } }
           << Field{ u"--model"_s,
                     u"CODE"_s,
                     u"panel model: 0 KX-410, 1 KX-410 UHF, 2 KX-410 T"_s,
                     false,
                     [models](I& in, Door*, const QString& v) {
                         const auto value = whole(v, 0, 99);
                         if (!value || !PanelChoices::contains(models, *value))
                             return codes(models);
                         PanelModel::byCode(*value).applyTo(in.values.settings);
                         in.blockTime
                             = QString::number(RepeatBlockTime::unpack(in.values.settings.sameTagBlockMinSec).time);
                         return QString();
                     },
                     [](const I& in, const Door*) { return QString::number(in.values.settings.model); } }
           << choice(u"--control-mode"_s, u"0 access control, 1 attendance"_s, &S::controlMode,
                     PanelChoices::controlModes())
           << choice(u"--ports"_s, u"RS485 ports: 0 port 1, 1 ports 1 and 2"_s, &S::singleUart, PanelChoices::ports())
           << address(u"--ip"_s, u"panel IP address"_s, &S::ip) << address(u"--subnet"_s, u"subnet mask"_s, &S::subnet)
           << address(u"--gateway"_s, u"default gateway"_s, &S::gateway)
           << Field{ u"--tcp-port"_s,
                     u"P"_s,
                     u"panel TCP port"_s,
                     false,
                     [](I& in, Door*, const QString& v) {
                         const auto value = whole(v, 0, 65535);
                         if (!value)
                             return range(0, 65535);
                         in.values.settings.tcpPort = *value;
                         return QString();
                     },
                     [](const I& in, const Door*) { return QString::number(in.values.settings.tcpPort); } }
           << address(u"--remote-ip"_s, u"address the panel pushes status and passages to"_s, &S::remoteIp)
           << Field{ u"--relay-times"_s,
                     u"T1,T2,T3,T4"_s,
                     u"master relay times in seconds (1..30)"_s,
                     false,
                     [](I& in, Door*, const QString& v) {
                         const QStringList parts = v.split(u',');
                         if (parts.size() != 4)
                             return u"takes four times separated by commas"_s;
                         for (int i = 0; i < 4; ++i)
                             in.masterRelayTimes[i] = parts.at(i);
                         return QString();
                     },
                     [](const I& in, const Door*) {
                         return QStringList(in.masterRelayTimes.begin(), in.masterRelayTimes.end()).join(u',');
                     } }
           << flag(u"--global-access-count"_s, u"global entry-count control"_s, &S::globalAccessCountControl)
           << flag(u"--global-inside-count"_s, u"global inside-count control"_s, &S::globalMaxInCountControl)
           << flag(u"--global-capacity"_s, u"global capacity control"_s, &S::globalCapacityControl)
           << flag(u"--capacity-control"_s, u"local capacity control"_s, &S::localCapacity)
           << typed(u"--capacity"_s, u"local capacity (1..9999)"_s, &I::capacity)
           << choice(u"--block-mode"_s, u"repeated-access block: 0 off, 1 same door, 2 any door"_s, &S::sameTagBlock,
                     PanelChoices::repeatBlockModes())
           << choice(u"--block-type"_s, u"0 every direction, 1 only after an exit"_s, &S::sameTagBlockType,
                     PanelChoices::repeatBlockTypes())
           << typed(u"--block-time"_s, u"repeated-access block time (0..60)"_s, &I::blockTime)
           << Field{ u"--block-unit"_s,
                     u"s|min"_s,
                     u"unit of the block time"_s,
                     false,
                     [](I& in, Door*, const QString& v) {
                         if (v != u"s"_s && v != u"min"_s)
                             return u"takes s or min"_s;
                         RepeatBlockTime block = RepeatBlockTime::unpack(in.values.settings.sameTagBlockMinSec);
                         block.unit = v == u"min"_s ? RepeatBlockTime::Minutes : RepeatBlockTime::Seconds;
                         in.values.settings.sameTagBlockMinSec = block.packed();
                         return QString();
                     },
                     [](const I& in, const Door*) {
                         return RepeatBlockTime::unpack(in.values.settings.sameTagBlockMinSec).unit
                                 == RepeatBlockTime::Minutes
                             ? u"min"_s
                             : u"s"_s;
                     } }
           << choice(u"--status-update"_s, u"0 off, 1 all, 2 status only, 3 passages only"_s, &S::statusDataUpdate,
                     PanelChoices::statusUpdates())
           << choice(u"--status-update-type"_s, u"0 remote address only, 1 UDP broadcast"_s, &S::statusDataUpdateType,
                     PanelChoices::statusUpdateTypes())
           << choice(u"--status-update-time"_s, u"0 on change and passage, 1 every second"_s, &S::statusDataUpdateTime,
                     PanelChoices::statusUpdateTimes())
           << flag(u"--inputs"_s, u"exit buttons / vehicle detectors in use"_s, &S::buttonActive)
           << Field{ u"--input-type"_s,
                     u"CODE"_s,
                     u"0 exit buttons, 1 vehicle detectors (KX-410 UHF)"_s,
                     false,
                     [](I& in, Door*, const QString& v) {
                         const auto value = whole(v, 0, 1);
                         if (!value)
                             return range(0, 1);
                         if (*value == 1 && !modelOf(in).vehicleDetectors)
                             return u"1 needs a model with vehicle detectors"_s;
                         in.values.settings.buttonLoop = *value;
                         return QString();
                     },
                     [](const I& in, const Door*) { return QString::number(in.values.settings.buttonLoop); } }
           << typed(u"--detector-time"_s, u"detector trigger time (1..9 s)"_s, &I::detectorTime)
           << flag(u"--local-apb"_s, u"local anti-passback, local zone 1"_s, &S::localApb)
           << flag(u"--local-apb2"_s, u"local anti-passback, local zone 2"_s, &S::localApb2)
           << flag(u"--global-apb"_s, u"global anti-passback"_s, &S::globalApb)
           << Field{ u"--global-zones"_s,
                     u"Z1,Z2"_s,
                     u"global zones of local zones 1 and 2 (1..64)"_s,
                     false,
                     [](I& in, Door*, const QString& v) {
                         const QStringList parts = v.split(u',');
                         if (parts.size() != 2)
                             return u"takes two zones separated by a comma"_s;
                         in.globalZones = { parts.at(0), parts.at(1) };
                         return QString();
                     },
                     [](const I& in, const Door*) { return QString(in.globalZones[0] + u',' + in.globalZones[1]); } }
           << flag(u"--temporary-groups"_s, u"temporary group assignment"_s, &S::temporaryGroupActive)
           << flag(u"--fire"_s, u"fire input"_s, &S::fireActive)
           << flag(u"--fire-broadcast"_s, u"broadcast when fire is detected"_s, &S::fireBroadcastActive);
    return fields;
}

QList<Field> doorFields()
{
    QList<Field> fields;
    fields << doorNumber(u"--door-active"_s, u"0|1"_s, u"door in use"_s, &Door::active,
                         [](const PanelSettingsInput&, const Door&, int v) { return v <= 1 ? QString() : range(0, 1); })
           << Field{ u"--door-name"_s,
                     u"TEXT"_s,
                     u"door name"_s,
                     true,
                     [](PanelSettingsInput& in, Door* door, const QString& v) {
                         const auto index = door - in.values.settings.doors.data();
                         in.values.doorNames[static_cast<size_t>(index)] = v;
                         return QString();
                     },
                     [](const PanelSettingsInput& in, const Door* door) {
                         return in.values.doorNames[static_cast<size_t>(door - in.values.settings.doors.data())];
                     } }
           << doorNumber(u"--door-relay-time"_s, u"T"_s, u"door relay time in seconds (0..99)"_s, &Door::relayTime,
                         [](const PanelSettingsInput& in, const Door&, int) {
                             return modelOf(in).doorRelays ? QString() : u"the model has no door relays"_s;
                         })
           << doorNumber(
                  u"--working-mode"_s, u"CODE"_s, u"0 normal, 1 toggle, 2 held open, 3 locked"_s, &Door::workingMode,
                  [](const PanelSettingsInput&, const Door&, int v) {
                      return v <= PanelChoices::LastWorkingMode ? QString() : range(0, PanelChoices::LastWorkingMode);
                  })
           << doorNumber(
                  u"--direction"_s, u"CODE"_s, u"0 entry, 1 exit"_s, &Door::doorType,
                  [](const PanelSettingsInput&, const Door&, int v) { return listed(PanelChoices::doorTypes(), v); })
           << doorNumber(
                  u"--reader-model"_s, u"CODE"_s, u"0 standard, 1 and 2 UHF readers (KX-410 UHF)"_s, &Door::readerModel,
                  [](const PanelSettingsInput& in, const Door&, int v) {
                      return modelOf(in).allowsReaderModel(v) ? QString() : u"not a reader model of this panel"_s;
                  })
           << doorNumber(u"--access-mode"_s, u"CODE"_s,
                         u"0 card and PIN, 1 card only, 2 PIN only, 3 card or PIN (UHF readers: 1 or 3)"_s,
                         &Door::accessMode,
                         [](const PanelSettingsInput&, const Door& door, int v) {
                             return listed(PanelChoices::accessModes(door.readerModel), v);
                         })
           << doorNumber(u"--relay-choice"_s, u"CODE"_s,
                         u"1 door relay, 2 door relay and master relay, 3 master relay only"_s, &Door::relayChoice,
                         [](const PanelSettingsInput& in, const Door&, int v) {
                             if (!modelOf(in).doorRelays && v != PanelChoices::RelayChoiceMasterOnly)
                                 return u"the model has no door relays: 3 only"_s;
                             return listed(PanelChoices::relayChoices(), v);
                         })
           << doorNumber(u"--master-relay"_s, u"N"_s, u"master relay the door drives (0 none, 1..4)"_s, &Door::relayNo,
                         [](const PanelSettingsInput&, const Door&, int v) { return v <= 4 ? QString() : range(0, 4); })
           << doorNumber(u"--door-input"_s, u"0|1"_s, u"the door's button/detector input in use"_s, &Door::buttonLoop,
                         [](const PanelSettingsInput&, const Door&, int v) { return v <= 1 ? QString() : range(0, 1); })
           << doorNumber(u"--local-zone"_s, u"1|2"_s, u"local door zone"_s, &Door::localZone,
                         [](const PanelSettingsInput&, const Door&, int v) {
                             return v == 1 || v == 2 ? QString() : range(1, 2);
                         });
    return fields;
}

const QList<Field>& allFields()
{
    static const QList<Field> fields = panelFields() + doorFields();
    return fields;
}

// The stored slot of the panel chosen with --panel; null after printing why.
std::optional<PanelSlot> chosenSlot(CliContext& context, const CliArguments& args, int* status)
{
    PanelTarget target = PanelTarget::Selected;
    *status = CliPanelChoice::apply(context, args, CliPanelChoice::Allowed::SelectedOnly, &target);
    if (*status >= 0)
        return std::nullopt;
    const auto entry = context.roster().selectedEntry();
    QString error;
    const auto slot = entry ? PanelSettingsRepository(context.db()).slot(entry->order, &error) : std::nullopt;
    if (!slot) {
        CliConsole::errLine(u"panel settings: "_s + (error.isEmpty() ? u"the panel's row is gone"_s : error));
        *status = CliExit::Failed;
    }
    return slot;
}

// Applies the options given to the input; false after printing the first refusal.
bool applyOptions(const CliArguments& args, PanelSettingsInput& input)
{
    Door* door = nullptr;
    if (args.has(u"--door"_s)) {
        const auto number = whole(args.value(u"--door"_s), 1, 4);
        if (!number) {
            CliConsole::errLine(u"panels settings: --door "_s + range(1, 4));
            return false;
        }
        door = &input.values.settings.doors[static_cast<size_t>(*number - 1)];
    }
    // The model first: choosing it changes what the other settings may be.
    QList<const Field*> ordered;
    for (const Field& field : allFields())
        (field.option == u"--model"_s ? ordered.prepend(&field) : ordered.append(&field));
    for (const Field* field : std::as_const(ordered)) {
        if (!args.has(field->option))
            continue;
        if (field->perDoor && !door) {
            CliConsole::errLine(u"panels settings: "_s + field->option + u" needs --door N"_s);
            return false;
        }
        const QString reason = field->apply(input, door, args.value(field->option));
        if (!reason.isEmpty()) {
            CliConsole::errLine(u"panels settings: "_s + field->option + u' ' + reason + u", not "_s
                                + args.value(field->option));
            return false;
        }
    }
    return true;
}

void show(const PanelSlot& slot)
{
    const PanelSettingsInput input = PanelSettingsInput::fromSlot(slot);
    for (const Field& field : allFields()) {
        if (!field.perDoor)
            CliConsole::outLine(field.option.mid(2) + u' ' + field.show(input, nullptr));
    }
    for (int d = 0; d < 4; ++d) {
        QStringList parts{ u"door "_s + QString::number(d + 1) + u':' };
        for (const Field& field : allFields()) {
            if (field.perDoor)
                parts << field.option.mid(2) + u'=' + field.show(input, &input.values.settings.doors[d]);
        }
        CliConsole::outLine(parts.join(u' '));
    }
    CliConsole::outLine(u"clock-offset "_s + (slot.clockOffset ? QString::number(*slot.clockOffset) : u"-"_s));
}

} // namespace

QList<CliArguments::Option> CliPanelSettings::options()
{
    QList<CliArguments::Option> list = CliPanelChoice::options(CliPanelChoice::Allowed::SelectedOnly);
    list.append({ u"--udp"_s, {}, u"send: by UDP broadcast instead of TCP"_s });
    list.append({ u"--search-port"_s, u"P"_s, u"send --udp: the panels' port (default 4113)"_s });
    list.append({ u"--local-port"_s, u"P"_s, u"send --udp: the local port it goes from (default 4114, 0 any)"_s });
    list.append({ u"--door"_s, u"D"_s, u"the door (1..4) the door settings below are for"_s });
    for (const Field& field : allFields())
        list.append({ field.option, field.valueName, field.help });
    return list;
}

int CliPanelSettings::settings(CliContext& context, const CliArguments& args)
{
    const QString action = args.word(0);
    if (action != u"show"_s && action != u"set"_s && action != u"send"_s) {
        CliConsole::errLine(u"panels settings: give show, set or send"_s);
        return CliExit::Usage;
    }
    int status = -1;
    const std::optional<PanelSlot> slot = chosenSlot(context, args, &status);
    if (!slot)
        return status;
    if (action == u"show"_s) {
        show(*slot);
        return CliExit::Success;
    }
    PanelSettingsInput input = PanelSettingsInput::fromSlot(*slot);
    if (!applyOptions(args, input))
        return CliExit::Usage;
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    for (const auto& [option, port] : { std::pair{ u"--search-port"_s, &operation.udp.searchPanelPort },
                                        std::pair{ u"--local-port"_s, &operation.udp.searchLocalPort } }) {
        if (!args.has(option))
            continue;
        QString error;
        const auto value = args.number(option, 0, 65535, &error);
        if (!value) {
            CliConsole::errLine(u"panels settings: "_s + error);
            return CliExit::Usage;
        }
        *port = static_cast<quint16>(*value);
    }
    PanelSettingsOperations panels(operation);
    if (action == u"set"_s)
        return context.exitFor(panels.save(slot->order, input));
    return context.exitFor(panels.send(slot->order, input, args.has(u"--udp"_s)));
}

int CliPanelSettings::remove(CliContext& context, const CliArguments& args)
{
    int status = -1;
    const std::optional<PanelSlot> slot = chosenSlot(context, args, &status);
    if (!slot)
        return status;
    if (const int stop = context.rightsFirst(); stop >= 0)
        return stop;
    OperationContext operation = context.operationContext();
    const WalkResult result = PanelSettingsOperations(operation).remove(slot->order);
    if (result.completed())
        CliConsole::outLine(u"panel "_s + QString::number(slot->panelNumber) + u" removed; its slot is kept"_s);
    return context.exitFor(result);
}
