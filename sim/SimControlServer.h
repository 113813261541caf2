#pragma once

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QTcpServer>

class QTcpSocket;
class SimulatorHost;

// The line-based control port: tests and scripts in another process seed panels, present cards
// and switch faults through it.
class SimControlServer : public QObject
{
    Q_OBJECT

public:
    static constexpr qsizetype kMaxLine = 4096;

    SimControlServer(SimulatorHost* host, QObject* parent = nullptr);

    bool listen(const QHostAddress& address, quint16 port, QString* error);
    quint16 port() const;

private:
    void onNewConnection();
    void onReadyRead(QTcpSocket* socket);

    SimulatorHost* m_host;
    QTcpServer m_server;
    QHash<QTcpSocket*, QByteArray> m_buffers;
};
