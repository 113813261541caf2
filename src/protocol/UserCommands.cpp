#include "protocol/UserCommands.h"

#include "protocol/AnswerReading.h"
#include "protocol/CardField.h"
#include "protocol/CommandRun.h"
#include "protocol/Formatters.h"

using namespace AnswerReading;

namespace {

QByteArray calendarDigit(qint32 calendarNo)
{
    return calendarNo > 0 && calendarNo <= 8 ? QByteArray::number(calendarNo) : QByteArray("1");
}

std::optional<qint64> numberAt(QByteArrayView block, int start, int length)
{
    return digitsValue(block.sliced(start, length));
}

} // namespace

QByteArray BuildUserBlock(const UserRecord& user, const QDateTime& now)
{
    const QTime time = user.temporaryGroupTime.isValid() ? user.temporaryGroupTime : now.time();
    const QDate date = user.temporaryGroupDate.isValid() ? user.temporaryGroupDate : now.date();
    return PadDigits(user.id, 5) + PadDigits(user.cardId, 10) + PadDigits(user.pin, 4) + PadDigits(user.passageMode, 2)
        + PadDigits(user.groupNo, 4) + FlagDigit(user.calendarActive) + FlagDigit(user.temporaryGroupActive)
        + calendarDigit(user.calendarNo) + PadDigits(user.temporaryGroupNo, 4) + PadDigits(time.hour(), 2)
        + PadDigits(time.minute(), 2) + PadDigits(date.day(), 2) + PadDigits(date.month(), 2)
        + PadDigits(date.year(), 4);
}

bool ParseUserBlock(QByteArrayView block, UserRecord& user)
{
    if (block.size() < 44)
        return false;
    const auto id = numberAt(block, 0, 5);
    const auto card = numberAt(block, 5, 10);
    const auto pin = numberAt(block, 15, 4);
    const auto mode = numberAt(block, 19, 2);
    const auto group = numberAt(block, 21, 4);
    const auto calendarActive = numberAt(block, 25, 1);
    const auto temporaryActive = numberAt(block, 26, 1);
    const auto calendarNo = numberAt(block, 27, 1);
    const auto temporaryGroup = numberAt(block, 28, 4);
    const auto hour = numberAt(block, 32, 2);
    const auto minute = numberAt(block, 34, 2);
    const auto day = numberAt(block, 36, 2);
    const auto month = numberAt(block, 38, 2);
    const auto year = numberAt(block, 40, 4);
    if (!id || !card || !pin || !mode || !group || !calendarActive || !temporaryActive || !calendarNo || !temporaryGroup
        || !hour || !minute || !day || !month || !year)
        return false;
    // Ten digits can hold more than the card field; such a card is not read as some other number.
    if (!fitsCardField(*card))
        return false;
    UserRecord parsed;
    parsed.id = static_cast<qint32>(*id);
    parsed.cardId = static_cast<qint32>(*card);
    parsed.pin = static_cast<qint32>(*pin);
    parsed.passageMode = static_cast<qint32>(*mode);
    parsed.groupNo = static_cast<qint32>(*group);
    parsed.calendarActive = *calendarActive != 0;
    parsed.temporaryGroupActive = *temporaryActive != 0;
    parsed.calendarNo = static_cast<qint32>(*calendarNo);
    parsed.temporaryGroupNo = static_cast<qint32>(*temporaryGroup);
    parsed.temporaryGroupTime = QTime(static_cast<int>(*hour), static_cast<int>(*minute));
    parsed.temporaryGroupDate = QDate(static_cast<int>(*year), static_cast<int>(*month), static_cast<int>(*day));
    user = parsed;
    return true;
}

QByteArray BuildNewCardFrame(const PanelAddress& panel, const UserRecord& user, const QDateTime& now)
{
    return panel.request("NC", BuildUserBlock(user, now));
}

QByteArray BuildReadCardFrame(const PanelAddress& panel, qint32 userId)
{
    return panel.request("UC", PadDigits(userId, 5));
}

QByteArray BuildDeleteCardFrame(const PanelAddress& panel, qint32 userId)
{
    return panel.request("DC", PadDigits(userId, 5));
}

QByteArray BuildEraseAllCardsFrame(const PanelAddress& panel)
{
    return panel.request("EC");
}

QByteArray BuildReadRecordCountFrame(const PanelAddress& panel)
{
    return panel.request("RC");
}

QByteArray BuildUserCountFrame(const PanelAddress& panel, qint32 count)
{
    return panel.request("MU", PadDigits(count, 5));
}

QByteArray BuildReadClockFrame(const PanelAddress& panel)
{
    return panel.request("UR");
}

QByteArray BuildSetClockFrame(const PanelAddress& panel, const QDateTime& now)
{
    const QDate date = now.date();
    const QTime time = now.time();
    const QByteArray fields = PadDigits(date.day(), 2) + PadDigits(date.month(), 2) + PadDigits(date.year() % 100, 2)
        + PadDigits(time.hour(), 2) + PadDigits(time.minute(), 2) + PadDigits(time.second(), 2)
        + PadDigits(date.dayOfWeek(), 2);
    return panel.request("DR", fields);
}

CommandResult<UserRecord> InterpretReadCard(const ExchangeResult& result, const PanelAddress& panel, qint32 userId)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findAnswer(result.text, panel.answerCode("UC"));
    const auto number = digitsValue(fieldAt(result.text, at, FieldOffset, 5));
    if (at < 0 || !number || *number != userId)
        return CommandOutcome::OtherCode;
    if (fieldAt(result.text, at, 15, 1) == "-")
        return CommandOutcome::OtherCode;
    // The stretch starts on the last digit of the user number; kept so that a user whose card
    // reads all zeros still passes when the user number does not end in 0.
    const QByteArray stretch = fieldAt(result.text, at, 14, 10);
    const auto card = digitsValue(stretch);
    if (stretch.size() != 10 || !card || *card <= 0)
        return CommandOutcome::Refused;
    UserRecord user;
    if (!ParseUserBlock(fieldAt(result.text, at, FieldOffset, 44), user))
        return CommandOutcome::OtherCode;
    return CommandResult<UserRecord>::accepted(user);
}

CommandResult<qint32> InterpretRecordCount(const ExchangeResult& result, const PanelAddress& panel)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findFirstDollarWithCode(result.text, panel.answerCode("RC"));
    if (at < 0)
        return CommandOutcome::OtherCode;
    const QByteArray field = fieldAt(result.text, at, FieldOffset, 5);
    const auto count = digitsValue(field);
    if (field.size() != 5 || !count || *count <= 0)
        return CommandOutcome::Refused;
    return CommandResult<qint32>::accepted(static_cast<qint32>(*count - 1));
}

CommandResult<PanelClock> InterpretPanelClock(const ExchangeResult& result, const PanelAddress& panel)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findFirstDollarWithCode(result.text, panel.answerCode("UR"));
    if (at < 0)
        return CommandOutcome::OtherCode;
    const QByteArray digits = fieldAt(result.text, at, FieldOffset, 12);
    if (digits.size() != 12 || !digitsValue(digits))
        return CommandOutcome::Refused;
    const QString d = QString::fromLatin1(digits);
    PanelClock clock;
    clock.text = d.mid(0, 2) + u'/' + d.mid(2, 2) + QStringLiteral("/20") + d.mid(4, 2) + u' ' + d.mid(6, 2) + u':'
        + d.mid(8, 2) + u':' + d.mid(10, 2);
    clock.time = QDateTime::fromString(clock.text, QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    return CommandResult<PanelClock>::accepted(clock);
}

CommandResult<> SendNewCard(PanelLink& link, const PanelAddress& panel, const UserRecord& user, const QDateTime& now)
{
    return acceptedByO(run(link, PanelCommand::NewCard, BuildNewCardFrame(panel, user, now)), panel.answerCode("NC"));
}

CommandResult<UserRecord> ReadCard(PanelLink& link, const PanelAddress& panel, qint32 userId)
{
    return InterpretReadCard(run(link, PanelCommand::ReadCard, BuildReadCardFrame(panel, userId)), panel, userId);
}

CommandResult<> DeleteCard(PanelLink& link, const PanelAddress& panel, qint32 userId)
{
    return anyAnswer(run(link, PanelCommand::DeleteCard, BuildDeleteCardFrame(panel, userId)));
}

CommandResult<> EraseAllCards(PanelLink& link, const PanelAddress& panel)
{
    return codeAnywhere(run(link, PanelCommand::EraseAllCards, BuildEraseAllCardsFrame(panel)), panel.answerCode("EC"));
}

CommandResult<qint32> ReadRecordCount(PanelLink& link, const PanelAddress& panel)
{
    return InterpretRecordCount(run(link, PanelCommand::ReadRecordCount, BuildReadRecordCountFrame(panel)), panel);
}

CommandResult<> SendUserCount(PanelLink& link, const PanelAddress& panel, qint32 count)
{
    return acceptedByO(run(link, PanelCommand::SendUserCount, BuildUserCountFrame(panel, count)),
                       panel.answerCode("MU"));
}

CommandResult<PanelClock> ReadPanelClock(PanelLink& link, const PanelAddress& panel)
{
    return InterpretPanelClock(run(link, PanelCommand::ReadPanelClock, BuildReadClockFrame(panel)), panel);
}

CommandResult<> SetPanelClock(PanelLink& link, const PanelAddress& panel, const QDateTime& now)
{
    return echoedCode(run(link, PanelCommand::SetPanelClock, BuildSetClockFrame(panel, now)), panel.answerCode("DR"));
}
