#include "protocol/PanelSettingsFrame.h"

#include "protocol/AnswerReading.h"
#include "protocol/CommandRun.h"
#include "protocol/Formatters.h"

using namespace AnswerReading;

namespace {

constexpr int NameWidth = 16;

enum class Kind
{
    Number,
    Flag
};

// Walks the record's fields in frame order; the one walk serves building and parsing, so the two
// cannot drift apart. Record is PanelSettingsRecord or const PanelSettingsRecord.
template <typename Record, typename NumberVisitor, typename NameVisitor>
void visitFields(Record& s, NumberVisitor number, NameVisitor name)
{
    for (auto& octet : s.ip)
        number(octet, 3, Kind::Number);
    for (auto& octet : s.subnet)
        number(octet, 3, Kind::Number);
    for (auto& octet : s.gateway)
        number(octet, 3, Kind::Number);
    number(s.tcpPort, 5, Kind::Number);
    for (auto& octet : s.remoteIp)
        number(octet, 3, Kind::Number);
    number(s.remoteTcpPort, 5, Kind::Number);
    name(s.name);
    number(s.model, 2, Kind::Number);
    number(s.controlMode, 1, Kind::Number);
    number(s.cardCount, 5, Kind::Number);
    for (auto& seconds : s.masterRelayTimes)
        number(seconds, 2, Kind::Number);
    number(s.singleUart, 1, Kind::Number);
    number(s.globalAccessCountControl, 1, Kind::Flag);
    number(s.globalMaxInCountControl, 1, Kind::Flag);
    number(s.globalCapacityControl, 1, Kind::Flag);
    number(s.localCapacity, 1, Kind::Flag);
    number(s.localCapacityValue, 4, Kind::Number);
    number(s.localCapacityClear, 1, Kind::Flag);
    number(s.sameTagBlock, 1, Kind::Number);
    number(s.sameTagBlockType, 1, Kind::Number);
    number(s.sameTagBlockMinSec, 3, Kind::Number);
    number(s.statusDataUpdate, 1, Kind::Number);
    number(s.statusDataUpdateType, 1, Kind::Number);
    number(s.statusDataUpdateTime, 1, Kind::Number);
    number(s.buttonActive, 1, Kind::Flag);
    number(s.buttonLoop, 1, Kind::Number);
    number(s.loopTriggerTime, 1, Kind::Number);
    number(s.localApb, 1, Kind::Flag);
    number(s.localApb2, 1, Kind::Flag);
    number(s.globalApb, 1, Kind::Flag);
    number(s.globalApbGroup, 4, Kind::Number);
    number(s.globalZone1, 3, Kind::Number);
    number(s.globalZone2, 3, Kind::Number);
    number(s.temporaryGroupActive, 1, Kind::Flag);
    number(s.fireActive, 1, Kind::Flag);
    number(s.fireBroadcastActive, 1, Kind::Flag);
    number(s.clearCapacityAtNight, 1, Kind::Flag);
    for (auto& door : s.doors) {
        number(door.active, 1, Kind::Flag);
        number(door.relayTime, 2, Kind::Number);
        number(door.workingMode, 1, Kind::Number);
        number(door.doorType, 1, Kind::Number);
        number(door.accessMode, 1, Kind::Number);
        number(door.readerModel, 2, Kind::Number);
        number(door.relayChoice, 1, Kind::Number);
        number(door.relayNo, 1, Kind::Number);
        number(door.buttonLoop, 1, Kind::Number);
        number(door.localZone, 1, Kind::Number);
    }
}

} // namespace

QByteArray PanelSettingsFrame::buildRecord(const PanelSettingsRecord& settings)
{
    QByteArray record;
    record.reserve(RecordLength);
    visitFields(
        settings,
        [&](const qint32& value, int width, Kind kind) {
            record += kind == Kind::Flag ? FlagDigit(value != 0) : PadDigits(value, width);
        },
        [&](const QString& name) { record += PadText(FrameSafeText(name), NameWidth); });
    return record;
}

bool PanelSettingsFrame::parseRecord(QByteArrayView record, PanelSettingsRecord& settings)
{
    if (record.size() < RecordLength)
        return false;
    PanelSettingsRecord parsed;
    qsizetype at = 0;
    bool ok = true;
    visitFields(
        parsed,
        [&](qint32& value, int width, Kind) {
            const auto digits = digitsValue(record.sliced(at, width));
            ok = ok && digits.has_value();
            value = digits ? static_cast<qint32>(*digits) : 0;
            at += width;
        },
        [&](QString& name) {
            name = QString::fromLatin1(record.sliced(at, NameWidth)).trimmed();
            at += NameWidth;
        });
    if (ok)
        settings = parsed;
    return ok;
}

QByteArray PanelSettingsFrame::buildFrame(const PanelAddress& panel, const PanelSettingsRecord& settings)
{
    return panel.request("DS", buildRecord(settings));
}

ParseStatus PanelSettingsFrame::parseSearchAnswer(QByteArrayView piece, SearchAnswer& answer)
{
    if (!piece.startsWith("$US")) {
        // A piece too short to tell yet may still become "$US".
        return QByteArrayView("$US").startsWith(piece) ? ParseStatus::NeedMore : ParseStatus::Malformed;
    }
    if (piece.size() < SearchAnswerLength)
        return ParseStatus::NeedMore;
    if (piece.sliced(SearchAnswerLength - 2, 2) != "**")
        return ParseStatus::Malformed;
    const auto serial = hexValue(piece.sliced(3, 4));
    const auto number = digitsValue(piece.sliced(7, 3));
    PanelSettingsRecord settings;
    if (!serial || !number || !parseRecord(piece.sliced(10, RecordLength), settings))
        return ParseStatus::Malformed;
    if (*number < 1 || *number > 64)
        return ParseStatus::OutOfRange;
    answer.serial = static_cast<quint16>(*serial);
    answer.panelNumber = static_cast<qint32>(*number);
    answer.settings = settings;
    return ParseStatus::Valid;
}

CommandResult<> SendPanelSettings(PanelLink& link, const PanelAddress& panel, const PanelSettingsRecord& settings)
{
    return acceptedByO(run(link, PanelCommand::SendPanelSettings, PanelSettingsFrame::buildFrame(panel, settings)),
                       panel.answerCode("DS"));
}
