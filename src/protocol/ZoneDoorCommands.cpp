#include "protocol/ZoneDoorCommands.h"

#include "protocol/AnswerReading.h"
#include "protocol/CommandRun.h"
#include "protocol/Formatters.h"

using namespace AnswerReading;

namespace {

PanelCommand doorCommandOf(qint32 action)
{
    switch (action) {
    case 1:
        return PanelCommand::DoorForceOpen;
    case 2:
        return PanelCommand::DoorForceClose;
    default:
        return PanelCommand::DoorTrigger;
    }
}

QByteArray doorCodeOf(qint32 action)
{
    switch (action) {
    case 0:
        return "DT";
    case 1:
        return "FO";
    case 2:
        return "FC";
    default:
        return {};
    }
}

} // namespace

QByteArray BuildEraseRecordMemoryFrame(const PanelAddress& panel)
{
    return panel.request("EM");
}

QByteArray BuildClearAllInsideCountsFrame(const PanelAddress& panel)
{
    return panel.request("MA");
}

QByteArray BuildClearGroupInsideCountFrame(const PanelAddress& panel, qint32 groupNo)
{
    return panel.request("MS", PadDigits(groupNo, 4));
}

QByteArray BuildReadGroupInsideCountFrame(const PanelAddress& panel, qint32 groupNo)
{
    return panel.request("MR", PadDigits(groupNo, 4));
}

QByteArray BuildReadZoneCounterFrame(const PanelAddress& panel, qint32 zone)
{
    return panel.request("GR", PadDigits(zone, 2));
}

QByteArray BuildWriteZoneCounterFrame(const PanelAddress& panel, qint32 zone, qint32 count)
{
    return panel.request("GW", PadDigits(zone, 2) + PadDigits(count, 4));
}

QByteArray BuildClearAlarmFrame(const PanelAddress& panel)
{
    return panel.request("AS");
}

QByteArray BuildResetUserAntiPassbackFrame(const PanelAddress& panel, qint32 userId)
{
    return panel.request("SA", PadDigits(userId, 5));
}

QByteArray BuildResetAllAntiPassbackFrame(const PanelAddress& panel)
{
    return panel.request("PA");
}

QByteArray BuildDoorText(const DoorCommandText& command)
{
    QByteArray text;
    for (const bool door : command.doors)
        text += FlagDigit(door);
    for (const bool relay : command.masterRelays)
        text += FlagDigit(relay);
    text += FlagDigit(command.withDoorMasterRelay) + FlagDigit(command.signalReader);
    text += FormatHex4(command.userId);
    text += PadDigits(command.cardId, 16);
    return text;
}

QByteArray BuildDoorCommandFrame(const PanelAddress& panel, qint32 action, const QByteArray& doorText)
{
    const QByteArray code = doorCodeOf(action);
    return code.isEmpty() ? QByteArray() : panel.request(code, doorText);
}

CommandResult<> EraseRecordMemory(PanelLink& link, const PanelAddress& panel)
{
    return echoedCode(run(link, PanelCommand::EraseRecordMemory, BuildEraseRecordMemoryFrame(panel)),
                      panel.answerCode("EM"));
}

CommandResult<> ClearAllInsideCounts(PanelLink& link, const PanelAddress& panel)
{
    return echoedCode(run(link, PanelCommand::ClearAllInsideCounts, BuildClearAllInsideCountsFrame(panel)),
                      panel.answerCode("MA"));
}

CommandResult<> ClearGroupInsideCount(PanelLink& link, const PanelAddress& panel, qint32 groupNo)
{
    return echoedCode(run(link, PanelCommand::ClearGroupInsideCount, BuildClearGroupInsideCountFrame(panel, groupNo)),
                      panel.answerCode("MS"));
}

CommandResult<QByteArray> ReadGroupInsideCount(PanelLink& link, const PanelAddress& panel, qint32 groupNo)
{
    return textField(run(link, PanelCommand::ReadGroupInsideCount, BuildReadGroupInsideCountFrame(panel, groupNo)),
                     panel.answerCode("MR"), 4);
}

CommandResult<QByteArray> ReadZoneCounter(PanelLink& link, const PanelAddress& panel, qint32 zone)
{
    return textField(run(link, PanelCommand::ReadZoneCounter, BuildReadZoneCounterFrame(panel, zone)),
                     panel.answerCode("GR"), 4);
}

CommandResult<> WriteZoneCounter(PanelLink& link, const PanelAddress& panel, qint32 zone, qint32 count)
{
    return echoedCode(run(link, PanelCommand::WriteZoneCounter, BuildWriteZoneCounterFrame(panel, zone, count)),
                      panel.answerCode("GW"));
}

CommandResult<> ClearAlarm(PanelLink& link, const PanelAddress& panel)
{
    return echoedCode(run(link, PanelCommand::ClearAlarm, BuildClearAlarmFrame(panel)), panel.answerCode("AS"));
}

CommandResult<> ResetUserAntiPassback(PanelLink& link, const PanelAddress& panel, qint32 userId)
{
    return echoedCode(run(link, PanelCommand::ResetUserAntiPassback, BuildResetUserAntiPassbackFrame(panel, userId)),
                      panel.answerCode("SA"));
}

CommandResult<> ResetAllAntiPassback(PanelLink& link, const PanelAddress& panel)
{
    return echoedCode(run(link, PanelCommand::ResetAllAntiPassback, BuildResetAllAntiPassbackFrame(panel)),
                      panel.answerCode("PA"));
}

CommandResult<> DoorCommand(PanelLink& link, const PanelAddress& panel, qint32 action, const QByteArray& doorText)
{
    const QByteArray frame = BuildDoorCommandFrame(panel, action, doorText);
    if (frame.isEmpty())
        return CommandOutcome::NoAnswer;
    return acceptedByO(run(link, doorCommandOf(action), frame), panel.answerCode(doorCodeOf(action)));
}
