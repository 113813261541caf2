#pragma once

#include <QByteArray>
#include <QThread>

class QTcpServer;

// The baseline counterpart: a loopback TCP server on its own thread that answers each request (a
// line ended by a carriage return) with a fixed reply, or echoes what arrives when none is given.
class LoopbackServer
{
public:
    explicit LoopbackServer(const QByteArray& reply = QByteArray());
    ~LoopbackServer();

    // Starts listening on 127.0.0.1; returns the port, 0 on failure.
    quint16 start();

private:
    QThread m_thread;
    QObject* m_context = nullptr;
    QTcpServer* m_server = nullptr;
    QByteArray m_reply;
};
