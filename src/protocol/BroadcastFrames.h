#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

// The fixed UDP frames and their ports.
class BroadcastFrames
{
public:
    // Status refresh: sent from StatusLocalPort to StatusPanelPort; answers come back to the former.
    static constexpr quint16 StatusPanelPort = 11000;
    static constexpr quint16 StatusLocalPort = 11001;
    // Panel search (and settings by broadcast): sent from SearchLocalPort to SearchPanelPort.
    static constexpr quint16 SearchPanelPort = 4113;
    static constexpr quint16 SearchLocalPort = 4114;
    // The alarm reset travels the status ports.
    static constexpr quint16 AlarmResetPanelPort = StatusPanelPort;
    static constexpr quint16 AlarmResetLocalPort = StatusLocalPort;
    // Search answers kept at most.
    static constexpr int MaxSearchAnswers = 128;

    // "%GMS**" and a carriage return.
    static QByteArray statusRequest();
    // "%US1975**" and a carriage return.
    static QByteArray searchRequest();
    // "%AS0000000**" and a carriage return: every panel clears its alarm and fire state.
    static QByteArray alarmReset();
    // A received datagram split at each "$"; every piece starts with "$" (text before the first
    // "$" is dropped).
    static QList<QByteArray> splitDatagram(QByteArrayView datagram);
};
