#include "SimControlServer.h"

#include "SimControlCommands.h"
#include "SimulatorHost.h"

#include <QTcpSocket>

SimControlServer::SimControlServer(SimulatorHost* host, QObject* parent)
    : QObject(parent)
    , m_host(host)
{
    connect(&m_server, &QTcpServer::newConnection, this, &SimControlServer::onNewConnection);
}

bool SimControlServer::listen(const QHostAddress& address, quint16 port, QString* error)
{
    if (m_server.listen(address, port))
        return true;
    if (error)
        *error = m_server.errorString();
    return false;
}

quint16 SimControlServer::port() const
{
    return m_server.serverPort();
}

void SimControlServer::onNewConnection()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        socket->setParent(this);
        m_buffers.insert(socket, QByteArray());
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_buffers.remove(socket);
            socket->deleteLater();
        });
    }
}

void SimControlServer::onReadyRead(QTcpSocket* socket)
{
    QByteArray& buffer = m_buffers[socket];
    buffer.append(socket->readAll());
    qsizetype end = -1;
    while ((end = buffer.indexOf('\n')) >= 0) {
        const QString line = QString::fromUtf8(buffer.left(end)).trimmed();
        buffer.remove(0, end + 1);
        if (line.isEmpty())
            continue;
        socket->write(SimControlCommands::execute(*m_host, line).toUtf8() + '\n');
    }
    // A line that never ends is not a command.
    if (buffer.size() > kMaxLine) {
        buffer.clear();
        socket->write("ERR line too long\n");
    }
}
