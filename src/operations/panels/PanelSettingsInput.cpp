#include "operations/panels/PanelSettingsInput.h"

#include "operations/panels/RepeatBlockTime.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

std::optional<qint32> wholeNumber(const QString& text)
{
    bool ok = false;
    const qint32 value = text.trimmed().toInt(&ok);
    return ok ? std::optional<qint32>(value) : std::nullopt;
}

// The number when it lies in low..high, else the fallback.
qint32 corrected(const QString& text, qint32 low, qint32 high, qint32 fallback)
{
    const auto value = wholeNumber(text);
    return value && *value >= low && *value <= high ? *value : fallback;
}

std::optional<quint16> serialNumber(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > 4)
        return std::nullopt;
    for (const QChar c : trimmed) {
        const QChar upper = c.toUpper();
        if (!(c >= u'0' && c <= u'9') && !(upper >= u'A' && upper <= u'F'))
            return std::nullopt;
    }
    const uint value = trimmed.toUInt(nullptr, 16);
    return value >= 1 ? std::optional<quint16>(static_cast<quint16>(value)) : std::nullopt;
}

} // namespace

PanelSettingsInput PanelSettingsInput::fromSlot(const PanelSlot& slot)
{
    const PanelSettingsRecord& s = slot.settings;
    PanelSettingsInput input;
    input.values = slot;
    input.panelNumber = slot.panelNumber > 0 ? QString::number(slot.panelNumber) : QString();
    input.serial = slot.serial > 0 ? QString::number(slot.serial, 16).toUpper().rightJustified(4, u'0') : QString();
    for (int i = 0; i < 4; ++i)
        input.masterRelayTimes[i] = QString::number(s.masterRelayTimes[i]);
    input.globalZones = { QString::number(s.globalZone1), QString::number(s.globalZone2) };
    input.capacity = QString::number(s.localCapacityValue);
    input.blockTime = QString::number(RepeatBlockTime::unpack(s.sameTagBlockMinSec).time);
    input.detectorTime = QString::number(s.loopTriggerTime);
    return input;
}

Message PanelSettingsInput::check(PanelSlot* slot) const
{
    const auto number = wholeNumber(panelNumber);
    if (!number || *number < 1 || *number > 64)
        return Message(u"Lütfen Panel No'sunu giriniz (1-64 arası)"_s);
    const auto hex = serialNumber(serial);
    if (!hex)
        return Message(u"Lütfen Panel Seri Numarasını Giriniz (4 haneli)"_s);

    PanelSlot checked = values;
    checked.panelNumber = *number;
    checked.serial = *hex;
    PanelSettingsRecord& s = checked.settings;
    for (int i = 0; i < 4; ++i)
        s.masterRelayTimes[i] = corrected(masterRelayTimes[i], 1, 30, 1);
    s.globalZone1 = corrected(globalZones[0], 1, 64, 1);
    s.globalZone2 = corrected(globalZones[1], 1, 64, 1);
    s.localCapacityValue = corrected(capacity, 1, 9999, 9999);
    RepeatBlockTime block = RepeatBlockTime::unpack(s.sameTagBlockMinSec);
    block.time = corrected(blockTime, 0, RepeatBlockTime::MaxTime, 0);
    s.sameTagBlockMinSec = block.packed();
    s.loopTriggerTime = corrected(detectorTime, 1, 9, 1);
    *slot = checked;
    return Message();
}
