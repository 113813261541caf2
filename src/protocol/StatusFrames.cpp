#include "protocol/StatusFrames.h"

#include "protocol/AnswerReading.h"

using namespace AnswerReading;

namespace {

// Digits the station does not know are shown as unknown rather than refused.
qint32 stateOrUnknown(char digit, qint32 unknown)
{
    return digit >= '0' && digit <= '9' ? digit - '0' : unknown;
}

ParseStatus checkLength(QByteArrayView text, QByteArrayView prefix, int length)
{
    if (!text.startsWith(prefix))
        return prefix.startsWith(text) ? ParseStatus::NeedMore : ParseStatus::Malformed;
    if (text.size() < length)
        return ParseStatus::NeedMore;
    return text.sliced(length - 2, 2) == "**" ? ParseStatus::Valid : ParseStatus::Malformed;
}

} // namespace

ParseStatus StatusFrames::parsePayload(QByteArrayView payload, PanelStatus& status)
{
    if (payload.size() < PayloadLength)
        return ParseStatus::NeedMore;
    const auto number = digitsValue(payload.sliced(0, 3));
    if (!number)
        return ParseStatus::Malformed;
    PanelStatus parsed;
    parsed.serial = status.serial;
    parsed.panelNumber = static_cast<qint32>(*number);
    for (int door = 0; door < 4; ++door) {
        parsed.doorState[door] = stateOrUnknown(payload.at(3 + 2 * door), PanelStatus::DoorUnknown);
        parsed.lineState[door] = stateOrUnknown(payload.at(4 + 2 * door), PanelStatus::LineUnknown);
    }
    parsed.zone1Full = payload.at(11) == '1';
    parsed.zone2Full = payload.at(15) == '1';
    parsed.fire = payload.at(21) == '1';
    parsed.alarm = payload.at(22) == '1';
    if (parsed.panelNumber < 1 || parsed.panelNumber > 64)
        return ParseStatus::OutOfRange;
    status = parsed;
    return ParseStatus::Valid;
}

ParseStatus StatusFrames::parseAnswer(QByteArrayView piece, PanelStatus& status)
{
    const ParseStatus shape = checkLength(piece, "$GMS", AnswerLength);
    if (shape != ParseStatus::Valid)
        return shape;
    const auto serial = hexValue(piece.sliced(4, 4));
    if (!serial)
        return ParseStatus::Malformed;
    PanelStatus parsed;
    parsed.serial = static_cast<quint16>(*serial);
    const ParseStatus result = parsePayload(piece.sliced(8, PayloadLength), parsed);
    if (result == ParseStatus::Valid)
        status = parsed;
    return result;
}

ParseStatus StatusFrames::parseFrame(QByteArrayView frame, PanelStatus& status)
{
    const ParseStatus shape = checkLength(frame, "%CMS", FrameLength);
    if (shape != ParseStatus::Valid)
        return shape;
    return parsePayload(frame.sliced(4, PayloadLength), status);
}
