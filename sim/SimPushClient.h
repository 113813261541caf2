#pragma once

#include <QObject>
#include <QTcpSocket>
#include <QTimer>
#include <QUdpSocket>
#include <deque>

// Carries a panel's live frames to the station: over one TCP connection that it opens (and opens
// again after a loss) on demand, or as datagrams when the panel's settings ask for that.
class SimPushClient : public QObject
{
    Q_OBJECT

public:
    static constexpr size_t kMaxQueued = 10000;

    explicit SimPushClient(QObject* parent = nullptr);

    // A connection to a port nobody listens on, from that same port of that same address, meets
    // itself (a simultaneous open) and holds the port the station wants to listen on.
    static bool isSelfConnected(const QAbstractSocket& socket);

    void send(const QByteArray& frame, const QString& host, quint16 port, bool datagram);
    // Frames waiting for a connection.
    int queued() const;
    int dropped() const;

private:
    void connectNow();
    void bindAwayFromTarget();
    void onConnected();
    void flush();
    void onLost();

    QTcpSocket m_socket;
    QUdpSocket m_udp;
    QTimer m_retry;
    QString m_host;
    quint16 m_port = 0;
    std::deque<QByteArray> m_queue;
    int m_dropped = 0;
};
