#include "SimPushClient.h"

#include <QHostAddress>

namespace {
constexpr int kRetryMs = 500;
}

SimPushClient::SimPushClient(QObject* parent)
    : QObject(parent)
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SimPushClient::connectNow);
    connect(&m_socket, &QTcpSocket::connected, this, &SimPushClient::flush);
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
    m_socket.connectToHost(m_host, m_port);
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
