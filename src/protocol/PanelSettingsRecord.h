#pragma once

#include <QString>
#include <array>

// The settings of one panel that travel in the settings record (the columns of PanelSettings
// except its list position, serial, number and door names). On/off columns hold 0 or 1.
struct PanelSettingsRecord
{
    struct Door
    {
        qint32 active = 1;
        qint32 relayTime = 1;
        qint32 workingMode = 0;
        qint32 doorType = 0; // 0 entry, 1 exit
        qint32 accessMode = 0;
        qint32 readerModel = 0;
        qint32 relayChoice = 1;
        qint32 relayNo = 1;
        qint32 buttonLoop = 1;
        qint32 localZone = 1;
        bool operator==(const Door&) const = default;
    };

    std::array<qint32, 4> ip{};
    std::array<qint32, 4> subnet{};
    std::array<qint32, 4> gateway{};
    qint32 tcpPort = 0;
    std::array<qint32, 4> remoteIp{};
    qint32 remoteTcpPort = 0;
    QString name;
    qint32 model = 0;
    qint32 controlMode = 0;
    qint32 cardCount = 0;
    std::array<qint32, 4> masterRelayTimes{ 1, 1, 1, 1 };
    qint32 singleUart = 0;
    qint32 globalAccessCountControl = 0;
    qint32 globalMaxInCountControl = 0;
    qint32 globalCapacityControl = 0;
    qint32 localCapacity = 0;
    qint32 localCapacityValue = 9999;
    qint32 localCapacityClear = 0;
    qint32 sameTagBlock = 0;
    qint32 sameTagBlockType = 0;
    qint32 sameTagBlockMinSec = 0;
    qint32 statusDataUpdate = 0;
    qint32 statusDataUpdateType = 0;
    qint32 statusDataUpdateTime = 0;
    qint32 buttonActive = 0;
    qint32 buttonLoop = 0;
    qint32 loopTriggerTime = 1;
    qint32 localApb = 0;
    qint32 localApb2 = 0;
    qint32 globalApb = 0;
    qint32 globalApbGroup = 0;
    qint32 globalZone1 = 1;
    qint32 globalZone2 = 1;
    qint32 temporaryGroupActive = 0;
    qint32 fireActive = 0;
    qint32 fireBroadcastActive = 0;
    qint32 clearCapacityAtNight = 0;
    std::array<Door, 4> doors{};

    bool operator==(const PanelSettingsRecord&) const = default;
};
