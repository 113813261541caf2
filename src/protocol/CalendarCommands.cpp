#include "protocol/CalendarCommands.h"

#include "protocol/AnswerReading.h"
#include "protocol/CommandRun.h"
#include "protocol/Formatters.h"

using namespace AnswerReading;

namespace {

QByteArray hourMinute(const QTime& time)
{
    return time.isValid() ? PadDigits(time.hour(), 2) + PadDigits(time.minute(), 2) : QByteArray("0000");
}

QByteArray dayMonthYear(const QDate& date)
{
    return date.isValid() ? PadDigits(date.day(), 2) + PadDigits(date.month(), 2) + PadDigits(date.year(), 4)
                          : QByteArray("00000000");
}

std::optional<QTime> timeAt(QByteArrayView text, qsizetype at)
{
    const auto hour = digitsValue(fieldAt(text, at, 0, 2));
    const auto minute = digitsValue(fieldAt(text, at, 2, 2));
    if (!hour || !minute)
        return std::nullopt;
    const QTime time(static_cast<int>(*hour), static_cast<int>(*minute));
    return time.isValid() ? std::optional<QTime>(time) : std::nullopt;
}

} // namespace

QByteArray BuildDailyApprovalFrame(const PanelAddress& panel, qint32 userId, bool approved)
{
    return panel.request("CS", PadDigits(userId, 5) + FlagDigit(approved));
}

QByteArray BuildGroupCalendarFrame(const PanelAddress& panel, const GroupCalendarRecord& calendar)
{
    const bool betweenHours = calendar.typeText.trimmed() == QStringLiteral(u"İki Saat Arası");
    const QByteArray fields = PadDigits(calendar.number, 1) + (betweenHours ? "0" : "1") + hourMinute(calendar.time1)
        + hourMinute(calendar.time2) + dayMonthYear(calendar.date1) + dayMonthYear(calendar.date2)
        + PadDigits(calendar.group1, 4) + PadDigits(calendar.group2, 4) + PadDigits(calendar.group3, 4);
    return panel.request("CZ", fields);
}

QByteArray BuildSlotFields(const ProgrammedSlot& slot)
{
    QByteArray fields = PadDigits(slot.weekday, 1) + PadDigits(slot.slot, 2) + FlagDigit(slot.active)
        + hourMinute(slot.start) + hourMinute(slot.end);
    for (int door = 0; door < 4; ++door)
        fields += FlagDigit(slot.doors[door]);
    fields += "0000";
    for (int relay = 0; relay < 4; ++relay)
        fields += FlagDigit(slot.relays[relay]);
    fields += "0000";
    return fields;
}

QByteArray BuildProgrammedSlotFrame(const PanelAddress& panel, const ProgrammedSlot& slot)
{
    return panel.request("ZW", BuildSlotFields(slot));
}

QByteArray BuildReadSlotFrame(const PanelAddress& panel, qint32 weekday, qint32 slot)
{
    return panel.request("ZR", PadDigits(weekday, 1) + PadDigits(slot, 2));
}

CommandResult<QByteArray> InterpretReadSlot(const ExchangeResult& result, const PanelAddress& panel)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findAnswer(result.text, panel.answerCode("ZR"));
    if (at < 0)
        return CommandOutcome::OtherCode;
    if (fieldAt(result.text, at, FieldOffset, 1) != "O")
        return CommandOutcome::Refused;
    // From this panel's answer on, so that reading the text again finds the same answer.
    return CommandResult<QByteArray>::accepted(result.text.sliced(at));
}

bool ParseReadSlotAnswer(QByteArrayView answer, ProgrammedSlot& slot)
{
    const qsizetype at = findAnswer(answer, "ZR");
    // The 28 slot characters follow the status: weekday 0, slot 1-2, active 3, start 4-7, end 8-11,
    // doors 12-15, relays 20-23 (offsets within them).
    const QByteArray fields = fieldAt(answer, at, FieldOffset + 1, 28);
    if (at < 0 || fields.size() != 28)
        return false;
    const auto start = timeAt(fields, 4);
    const auto end = timeAt(fields, 8);
    const auto active = digitsValue(fields.mid(3, 1));
    const auto doors = digitsValue(fields.mid(12, 4));
    const auto relays = digitsValue(fields.mid(20, 4));
    if (!start || !end || !active || !doors || !relays)
        return false;
    slot.active = *active != 0;
    slot.start = *start;
    slot.end = *end;
    for (int i = 0; i < 4; ++i) {
        slot.doors[i] = fields.at(12 + i) != '0';
        slot.relays[i] = fields.at(20 + i) != '0';
    }
    return true;
}

CommandResult<> SendDailyApproval(PanelLink& link, const PanelAddress& panel, qint32 userId, bool approved)
{
    return acceptedByO(run(link, PanelCommand::SendDailyApproval, BuildDailyApprovalFrame(panel, userId, approved)),
                       panel.answerCode("CS"));
}

CommandResult<> SendGroupCalendar(PanelLink& link, const PanelAddress& panel, const GroupCalendarRecord& calendar)
{
    return acceptedByO(run(link, PanelCommand::SendGroupCalendar, BuildGroupCalendarFrame(panel, calendar)),
                       panel.answerCode("CZ"));
}

CommandResult<> SendProgrammedSlot(PanelLink& link, const PanelAddress& panel, const ProgrammedSlot& slot)
{
    return acceptedByO(run(link, PanelCommand::SendProgrammedSlot, BuildProgrammedSlotFrame(panel, slot)),
                       panel.answerCode("ZW"));
}

CommandResult<QByteArray> ReadProgrammedSlot(PanelLink& link, const PanelAddress& panel, qint32 weekday, qint32 slot)
{
    return InterpretReadSlot(run(link, PanelCommand::ReadProgrammedSlot, BuildReadSlotFrame(panel, weekday, slot)),
                             panel);
}
