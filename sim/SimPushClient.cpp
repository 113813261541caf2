#include "SimPushClient.h"

#include <QHostAddress>

namespace {
constexpr int kRetryMs = 500;
// Binding again when the system hands out the target's own port; twice in a row is already rare.
constexpr int kBindAttempts = 8;
} // namespace

SimPushClient::SimPushClient(QObject* parent)
    : QObject(parent)
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SimPushClient::connectNow);
    connect(&m_socket, &QTcpSocket::connected, this, &SimPushClient::onConnected);
    connect(&m_socket, &QTcpSocket::disconnected, this, &SimPushClient::onLost);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &SimPushClient::onLost);
    // The station does not talk back on the live link; whatever it sends is read and dropped.
    connect(&m_socket, &QTcpSocket::readyRead, this, [this] { m_socket.readAll(); });
}

void SimPushClient::send(const QByteArray& frame, const QString& host, quint16 port, bool datagram)
{
    if (host.isEmpty() || port == 0)
        return;
    if (datagram) {
        m_udp.writeDatagram(frame, QHostAddress(host), port);
        return;
    }
    if (host != m_host || port != m_port) {
        m_socket.abort();
        m_host = host;
        m_port = port;
    }
    if (m_queue.size() >= kMaxQueued) {
        m_queue.pop_front();
        ++m_dropped;
    }
    m_queue.push_back(frame);
    if (m_socket.state() == QAbstractSocket::ConnectedState)
        flush();
    else if (m_socket.state() == QAbstractSocket::UnconnectedState && !m_retry.isActive())
        connectNow();
}

bool SimPushClient::isSelfConnected(const QAbstractSocket& socket)
{
    return socket.state() == QAbstractSocket::ConnectedState && socket.localPort() == socket.peerPort()
        && socket.localAddress().isEqual(socket.peerAddress(), QHostAddress::TolerantConversion);
}

int SimPushClient::queued() const
{
    return int(m_queue.size());
}

int SimPushClient::dropped() const
{
    return m_dropped;
}

void SimPushClient::connectNow()
{
    if (m_socket.state() != QAbstractSocket::UnconnectedState || m_host.isEmpty())
        return;
    bindAwayFromTarget();
    m_socket.connectToHost(m_host, m_port);
}

void SimPushClient::bindAwayFromTarget()
{
    // The local port is taken before connecting, so it can never be the target's port.
    const QHostAddress target(m_host);
    if (target.isNull())
        return; // a name: its address family is known only after the look-up
    const QHostAddress any
        = target.protocol() == QAbstractSocket::IPv6Protocol ? QHostAddress::AnyIPv6 : QHostAddress::AnyIPv4;
    for (int attempt = 0; attempt < kBindAttempts; ++attempt) {
        if (!m_socket.bind(any, 0))
            return;
        if (m_socket.localPort() != m_port)
            return;
        m_socket.abort();
    }
}

void SimPushClient::onConnected()
{
    // Checked as well when the port could not be chosen beforehand.
    if (isSelfConnected(m_socket)) {
        m_socket.abort();
        if (!m_retry.isActive())
            m_retry.start(kRetryMs);
        return;
    }
    flush();
}

void SimPushClient::flush()
{
    while (!m_queue.empty() && m_socket.state() == QAbstractSocket::ConnectedState) {
        m_socket.write(m_queue.front());
        m_queue.pop_front();
    }
}

void SimPushClient::onLost()
{
    if (m_socket.state() != QAbstractSocket::UnconnectedState)
        m_socket.abort();
    if (!m_queue.empty() && !m_retry.isActive())
        m_retry.start(kRetryMs);
}
