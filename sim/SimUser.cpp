#include "SimUser.h"

#include "SimText.h"

QByteArray SimUser::toBlock() const
{
    const QDate day = temporaryUntil.date();
    const QTime time = temporaryUntil.time();
    QByteArray block;
    block.reserve(kBlockSize);
    block += SimText::number(id, 5);
    block += SimText::number(card, 10);
    block += SimText::number(pin, 4);
    block += SimText::number(passageMode, 2);
    block += SimText::number(group, 4);
    block += calendarActive ? '1' : '0';
    block += temporaryActive ? '1' : '0';
    block += SimText::number(calendar, 1);
    block += SimText::number(temporaryGroup, 4);
    block += SimText::number(time.hour(), 2);
    block += SimText::number(time.minute(), 2);
    block += SimText::number(day.day(), 2);
    block += SimText::number(day.month(), 2);
    block += SimText::number(day.year(), 4);
    return block;
}

std::optional<SimUser> SimUser::fromBlock(const QByteArray& block)
{
    if (block.size() < kBlockSize)
        return std::nullopt;
    SimUser user;
    const auto id = SimText::digits(block, 0, 5);
    const auto card = SimText::longDigits(block, 5, 10);
    const auto pin = SimText::digits(block, 15, 4);
    const auto mode = SimText::digits(block, 19, 2);
    const auto group = SimText::digits(block, 21, 4);
    const auto calendarActive = SimText::flag(block, 25);
    const auto temporaryActive = SimText::flag(block, 26);
    const auto calendar = SimText::digits(block, 27, 1);
    const auto temporaryGroup = SimText::digits(block, 28, 4);
    const auto hour = SimText::digits(block, 32, 2);
    const auto minute = SimText::digits(block, 34, 2);
    const auto day = SimText::digits(block, 36, 2);
    const auto month = SimText::digits(block, 38, 2);
    const auto year = SimText::digits(block, 40, 4);
    if (!id || !card || !pin || !mode || !group || !calendarActive || !temporaryActive || !calendar || !temporaryGroup
        || !hour || !minute || !day || !month || !year)
        return std::nullopt;
    user.id = *id;
    user.card = *card;
    user.pin = *pin;
    user.passageMode = *mode;
    user.group = *group;
    user.calendarActive = *calendarActive;
    user.temporaryActive = *temporaryActive;
    user.calendar = *calendar;
    user.temporaryGroup = *temporaryGroup;
    // A date the calendar does not know (31/02) leaves the temporary group without an end; the panel
    // then treats it as already over.
    user.temporaryUntil = QDateTime(QDate(*year, *month, *day), QTime(*hour, *minute), Qt::UTC);
    return user;
}

QByteArray SimUser::emptyBlock(int id)
{
    return SimText::number(id, 5) + QByteArray(kBlockSize - 5, '-');
}
