#pragma once

#include "operations/live/UdpSettings.h"
#include "protocol/PanelStatus.h"

#include <QObject>

class PanelRoster;
class QUdpSocket;

// Receives the panels' status answers on the local status port and enters them into the
// roster's door status table; also sends the status request from that same port, so the answers
// come back to it. Lives on the thread that created it.
class StatusListener : public QObject
{
    Q_OBJECT

public:
    StatusListener(PanelRoster& roster, const UdpSettings& settings, QObject* parent = nullptr);
    ~StatusListener() override;

    // Binds the local status port; false with the reason when it is taken.
    bool start(QString* error = nullptr);
    void stop();
    bool isListening() const;
    quint16 localPort() const;

    // Sends "%GMS**" to the broadcast address and status port (starting the listener first when
    // needed).
    Q_INVOKABLE bool requestStatus();
    // Takes one datagram as if it had arrived (split at "$"; unknown pieces ignored).
    void takeDatagram(const QByteArray& datagram);

Q_SIGNALS:
    // One panel's answer, entered at that roster position.
    void statusReceived(int position, const PanelStatus& status);

private:
    void readPending();

    PanelRoster& m_roster;
    UdpSettings m_settings;
    QUdpSocket* m_socket = nullptr;
};
