#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <optional>

// The panel's settings record (176 characters, written by the station and reported back by the
// search answer) and the part of it the panel acts on.
struct SimPanelSettings
{
    static constexpr int kRecordSize = 176;

    struct Door
    {
        bool active = true;
        bool entry = true;
        int localZone = 1;
    };

    enum StatusUpdate
    {
        UpdateOff = 0,
        UpdateAll = 1,
        UpdateStatusOnly = 2,
        UpdateEventsOnly = 3
    };

    std::array<Door, 4> doors{ { { true, true, 1 }, { true, false, 1 }, { true, true, 1 }, { true, false, 1 } } };
    std::array<bool, 2> localAntiPassback{};
    bool globalAntiPassback = false;
    bool localCapacityOn = false;
    int localCapacity = 9999;
    int repeatBlockSeconds = 0;
    bool temporaryGroupsOn = false;
    bool fireInputOn = false;
    int statusUpdate = UpdateAll;
    bool statusEverySecond = false;
    bool statusByDatagram = false;
    QString remoteHost; // dotted address the panel pushes live frames to; empty when none
    int remotePort = 0;
    QByteArray record; // the record as last written

    // Settings as a panel leaves the factory: every door active, odd doors entries, one zone.
    static SimPanelSettings defaults(int tcpPort, const QString& pushHost, int pushPort, int number);
    // Reads a record; nothing when it is short or a numeric field holds anything but digits.
    static std::optional<SimPanelSettings> fromRecord(const QByteArray& record);
};
