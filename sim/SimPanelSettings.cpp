#include "SimPanelSettings.h"

#include "SimText.h"

#include <QHostAddress>
#include <QStringList>
#include <algorithm>

namespace {
// 0-based offsets into the record.
constexpr int kRemoteIp = 41;
constexpr int kRemotePort = 53;
constexpr int kName = 58;
constexpr int kNameSize = 16;
constexpr int kCapacityOn = 94;
constexpr int kCapacity = 95;
constexpr int kSameTagBlock = 100;
constexpr int kSameTagTime = 102;
constexpr int kStatusUpdate = 105;
constexpr int kStatusUpdateTime = 107;
constexpr int kLocalApb = 111;
constexpr int kGlobalApb = 113;
constexpr int kTemporaryGroups = 124;
constexpr int kFireInput = 125;
constexpr int kDoors = 128;
constexpr int kDoorSize = 12;

QByteArray addressField(const QString& host)
{
    QHostAddress address(host);
    bool ok = false;
    const quint32 ip = address.toIPv4Address(&ok);
    if (!ok)
        return QByteArray(12, '0');
    QByteArray field;
    for (int shift = 24; shift >= 0; shift -= 8)
        field += SimText::number((ip >> shift) & 0xFF, 3);
    return field;
}
} // namespace

SimPanelSettings SimPanelSettings::defaults(int tcpPort, const QString& pushHost, int pushPort, int number)
{
    QByteArray r;
    r += "127000000001"
         "255255255000"
         "127000000001";
    r += SimText::number(tcpPort, 5);
    r += addressField(pushHost);
    r += SimText::number(pushPort, 5);
    r += QByteArray(QByteArray("PANEL ") + QByteArray::number(number)).leftJustified(kNameSize, ' ', true);
    r += "00"
         "0"
         "00000"
         "01010101"
         "0";
    r += "0000"
         "9999"
         "0";
    r += "0"
         "0"
         "000";
    r += "1"
         "0"
         "0";
    r += "0"
         "0"
         "1";
    r += "000"
         "0000"
         "001"
         "001";
    r += "0000";
    for (int door = 1; door <= 4; ++door)
        r += QByteArray("1030") + (door % 2 ? '0' : '1') + "1001111";
    auto settings = fromRecord(r);
    return settings.value_or(SimPanelSettings());
}

std::optional<SimPanelSettings> SimPanelSettings::fromRecord(const QByteArray& raw)
{
    if (raw.size() < kRecordSize)
        return std::nullopt;
    const QByteArray record = raw.left(kRecordSize);
    for (int i = 0; i < kRecordSize; ++i) {
        const bool inName = i >= kName && i < kName + kNameSize;
        if (!inName && (record.at(i) < '0' || record.at(i) > '9'))
            return std::nullopt;
    }
    const auto at = [&record](int pos, int width) { return SimText::digits(record, pos, width).value_or(0); };
    SimPanelSettings s;
    s.record = record;
    s.localCapacityOn = at(kCapacityOn, 1) != 0;
    s.localCapacity = at(kCapacity, 4);
    // The block time is packed as unit * 100 + time (unit 1: minutes).
    const int packed = at(kSameTagTime, 3);
    const int blockTime = std::min(packed % 100, 60) * (packed / 100 == 1 ? 60 : 1);
    s.repeatBlockSeconds = at(kSameTagBlock, 1) != 0 ? blockTime : 0;
    s.statusUpdate = at(kStatusUpdate, 1);
    s.statusEverySecond = at(kStatusUpdateTime, 1) == 1;
    s.statusByDatagram = at(kStatusUpdate + 1, 1) == 1;
    s.localAntiPassback = { at(kLocalApb, 1) != 0, at(kLocalApb + 1, 1) != 0 };
    s.globalAntiPassback = at(kGlobalApb, 1) != 0;
    s.temporaryGroupsOn = at(kTemporaryGroups, 1) != 0;
    s.fireInputOn = at(kFireInput, 1) != 0;
    QStringList octets;
    for (int i = 0; i < 4; ++i)
        octets.append(QString::number(at(kRemoteIp + 3 * i, 3)));
    s.remotePort = at(kRemotePort, 5);
    s.remoteHost = s.remotePort > 0 && octets.first() != u"0" ? octets.join(u'.') : QString();
    for (int door = 0; door < 4; ++door) {
        const int base = kDoors + door * kDoorSize;
        s.doors[door].active = at(base, 1) != 0;
        s.doors[door].entry = at(base + 4, 1) == 0;
        s.doors[door].localZone = at(base + 11, 1) == 2 ? 2 : 1;
    }
    return s;
}
