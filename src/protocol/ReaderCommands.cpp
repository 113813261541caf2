#include "protocol/ReaderCommands.h"

#include "protocol/AnswerReading.h"
#include "protocol/CommandRun.h"
#include "protocol/Formatters.h"

using namespace AnswerReading;

QByteArray BuildSetReaderPowerFrame(const PanelAddress& panel, qint32 reader, qint32 powerDbm)
{
    const qint32 power = powerDbm >= 15 && powerDbm <= 30 ? powerDbm : 30;
    return panel.request("PS", PadDigits(reader, 1) + PadDigits(power, 2));
}

QByteArray BuildGetReaderPowerFrame(const PanelAddress& panel, qint32 reader)
{
    return panel.request("PR", PadDigits(reader, 1));
}

QByteArray BuildSetBuzzerLedFrame(const PanelAddress& panel, qint32 reader, qint32 buzzer, qint32 led)
{
    return panel.request("LW", PadDigits(reader, 1) + PadDigits(buzzer, 1) + PadDigits(led, 1));
}

QByteArray BuildGetBuzzerLedFrame(const PanelAddress& panel, qint32 reader)
{
    return panel.request("LR", PadDigits(reader, 1));
}

QByteArray BuildEraseAllAccessCountersFrame(const PanelAddress& panel)
{
    return panel.request("ES");
}

QByteArray BuildEraseAccessCounterFrame(const PanelAddress& panel, qint32 userId)
{
    return panel.request("EP", PadDigits(userId, 5));
}

QByteArray BuildReadAccessCounterFrame(const PanelAddress& panel, qint32 userId)
{
    return panel.request("RP", PadDigits(userId, 5));
}

CommandResult<qint32> InterpretTwoDigitValue(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findAnswer(result.text, code);
    if (at < 0)
        return CommandOutcome::OtherCode;
    if (fieldAt(result.text, at, FieldOffset, 1) != "O")
        return CommandOutcome::Refused;
    const QByteArray digits = fieldAt(result.text, at, FieldOffset + 1, 2);
    const auto value = digitsValue(digits);
    if (digits.size() != 2 || !value)
        return CommandOutcome::Refused;
    return CommandResult<qint32>::accepted(static_cast<qint32>(*value));
}

CommandResult<> SetReaderPower(PanelLink& link, const PanelAddress& panel, qint32 reader, qint32 powerDbm)
{
    return acceptedByO(run(link, PanelCommand::SetReaderPower, BuildSetReaderPowerFrame(panel, reader, powerDbm)),
                       panel.answerCode("PS"));
}

CommandResult<qint32> GetReaderPower(PanelLink& link, const PanelAddress& panel, qint32 reader)
{
    return InterpretTwoDigitValue(run(link, PanelCommand::GetReaderPower, BuildGetReaderPowerFrame(panel, reader)),
                                  panel.answerCode("PR"));
}

CommandResult<> SetBuzzerLed(PanelLink& link, const PanelAddress& panel, qint32 reader, qint32 buzzer, qint32 led)
{
    return acceptedByO(run(link, PanelCommand::SetBuzzerLed, BuildSetBuzzerLedFrame(panel, reader, buzzer, led)),
                       panel.answerCode("LW"));
}

CommandResult<qint32> GetBuzzerLed(PanelLink& link, const PanelAddress& panel, qint32 reader)
{
    return InterpretTwoDigitValue(run(link, PanelCommand::GetBuzzerLed, BuildGetBuzzerLedFrame(panel, reader)),
                                  panel.answerCode("LR"));
}

CommandResult<> EraseAllAccessCounters(PanelLink& link, const PanelAddress& panel)
{
    return echoedCode(run(link, PanelCommand::EraseAllAccessCounters, BuildEraseAllAccessCountersFrame(panel)),
                      panel.answerCode("ES"));
}

CommandResult<> EraseAccessCounter(PanelLink& link, const PanelAddress& panel, qint32 userId)
{
    return echoedCode(run(link, PanelCommand::EraseAccessCounter, BuildEraseAccessCounterFrame(panel, userId)),
                      panel.answerCode("EP"));
}

CommandResult<QByteArray> ReadAccessCounter(PanelLink& link, const PanelAddress& panel, qint32 userId)
{
    return textField(run(link, PanelCommand::ReadAccessCounter, BuildReadAccessCounterFrame(panel, userId)),
                     panel.answerCode("RP"), 9);
}
