#include "protocol/LiveFrames.h"

#include "protocol/AnswerReading.h"

using namespace AnswerReading;

LiveFrames::Kind LiveFrames::kindOf(QByteArrayView frame)
{
    if (frame.startsWith("%CMS"))
        return Kind::Status;
    if (frame.startsWith("%CD"))
        return Kind::CardEvent;
    return Kind::Unknown;
}

ParseStatus LiveFrames::parseCardEvent(QByteArrayView frame, CardEvent& event)
{
    if (!frame.startsWith("%CD"))
        return QByteArrayView("%CD").startsWith(frame) ? ParseStatus::NeedMore : ParseStatus::Malformed;
    if (frame.size() < CardEventLength)
        return ParseStatus::NeedMore;
    if (frame.sliced(CardEventLength - 2, 2) != "**")
        return ParseStatus::Malformed;
    const QByteArrayView payload = frame.sliced(3, 33);
    const auto panel = digitsValue(payload.sliced(0, 3));
    const auto door = digitsValue(payload.sliced(3, 1));
    const auto code = digitsValue(payload.sliced(4, 1));
    const auto direction = digitsValue(payload.sliced(5, 1));
    const auto user = digitsValue(payload.sliced(6, 5));
    const auto card = digitsValue(payload.sliced(11, 10));
    const auto stamp = digitsValue(payload.sliced(21, 12));
    if (!panel || !door || !code || !direction || !user || !card || !stamp)
        return ParseStatus::Malformed;
    const QByteArray digits = payload.sliced(21, 12).toByteArray();
    const QDate date(2000 + digits.mid(4, 2).toInt(), digits.mid(2, 2).toInt(), digits.mid(0, 2).toInt());
    const QTime time(digits.mid(6, 2).toInt(), digits.mid(8, 2).toInt(), digits.mid(10, 2).toInt());
    if (!date.isValid() || !time.isValid())
        return ParseStatus::Malformed;
    CardEvent parsed;
    parsed.panelNumber = static_cast<qint32>(*panel);
    parsed.door = static_cast<qint32>(*door);
    parsed.code = passageCodeOf(static_cast<qint32>(*code));
    parsed.direction = directionOfLiveDigit(static_cast<qint32>(*direction));
    parsed.userId = static_cast<qint32>(*user);
    parsed.cardId = *card;
    parsed.time = QDateTime(date, time);
    event = parsed;
    return ParseStatus::Valid;
}
