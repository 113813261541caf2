#include "operations/panels/PanelSlot.h"

using namespace Qt::StringLiterals;

PanelAddress PanelSlot::address() const
{
    return PanelAddress(static_cast<qint16>(panelNumber), serial);
}

QString PanelSlot::defaultDoorName(int door)
{
    return u"Kapi "_s + QString::number(door);
}

void PanelSlot::reset()
{
    panelNumber = 0;
    serial = 0;
    PanelSettingsRecord& s = settings;
    s.name.clear();
    s.ip = {};
    s.subnet = {};
    s.tcpPort = 0;
    s.buttonActive = 0;
    s.localApb = 0;
    s.localApb2 = 0;
    s.globalApb = 0;
    s.masterRelayTimes = { 1, 1, 1, 1 };
    s.globalZone1 = 0;
    s.globalZone2 = 0;
    for (int d = 0; d < 4; ++d) {
        PanelSettingsRecord::Door& door = s.doors[d];
        doorNames[d] = defaultDoorName(d + 1);
        door.active = 1;
        door.relayChoice = 1;
        door.relayNo = 1;
        door.buttonLoop = 1;
        door.doorType = d % 2 == 0 ? 0 : 1;
    }
}
