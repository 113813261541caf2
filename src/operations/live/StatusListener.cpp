#include "operations/live/StatusListener.h"

#include "operations/panels/PanelRoster.h"
#include "protocol/BroadcastFrames.h"
#include "protocol/StatusFrames.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

StatusListener::StatusListener(PanelRoster& roster, const UdpSettings& settings, QObject* parent)
    : QObject(parent)
    , m_roster(roster)
    , m_settings(settings)
{ }

StatusListener::~StatusListener()
{
    stop();
}

bool StatusListener::start(QString* error)
{
    if (m_socket)
        return true;
    auto* socket = new QUdpSocket(this);
    if (!socket->bind(QHostAddress(QHostAddress::AnyIPv4), m_settings.statusLocalPort,
                      QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
        if (error)
            *error = socket->errorString();
        delete socket;
        return false;
    }
    connect(socket, &QUdpSocket::readyRead, this, &StatusListener::readPending);
    m_socket = socket;
    return true;
}

void StatusListener::stop()
{
    delete m_socket;
    m_socket = nullptr;
}

bool StatusListener::isListening() const
{
    return m_socket != nullptr;
}

quint16 StatusListener::localPort() const
{
    return m_socket ? m_socket->localPort() : 0;
}

bool StatusListener::requestStatus()
{
    if (!start())
        return false;
    const QByteArray frame = BroadcastFrames::statusRequest();
    return m_socket->writeDatagram(frame, QHostAddress(m_settings.broadcastAddress), m_settings.statusPanelPort)
        == frame.size();
}

void StatusListener::takeDatagram(const QByteArray& datagram)
{
    bool changed = false;
    for (const QByteArray& piece : BroadcastFrames::splitDatagram(datagram)) {
        PanelStatus status;
        if (StatusFrames::parseAnswer(piece, status) != ParseStatus::Valid)
            continue;
        const auto entry = m_roster.entryForPanel(status.panelNumber);
        if (!entry)
            continue;
        m_roster.doorStatus().apply(entry->position, status);
        changed = true;
        Q_EMIT statusReceived(entry->position, status);
    }
    if (changed)
        m_roster.notifyDoorStatusChanged();
}

void StatusListener::readPending()
{
    while (m_socket && m_socket->hasPendingDatagrams())
        takeDatagram(m_socket->receiveDatagram().data());
}
