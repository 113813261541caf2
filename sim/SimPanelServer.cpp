#include "SimPanelServer.h"

#include "SimConnection.h"
#include "SimPanel.h"

#include <QTcpSocket>

SimPanelServer::SimPanelServer(QObject* parent)
    : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, &SimPanelServer::onNewConnection);
}

void SimPanelServer::attach(SimPanel* panel)
{
    m_panel = panel;
    connect(panel, &SimPanel::dropRequested, this, &SimPanelServer::dropConnections);
}

bool SimPanelServer::listen(const QHostAddress& address, quint16 port, QString* error)
{
    if (m_server.listen(address, port))
        return true;
    if (error)
        *error = m_server.errorString();
    return false;
}

quint16 SimPanelServer::port() const
{
    return m_server.serverPort();
}

void SimPanelServer::dropConnections()
{
    const QList<SimConnection*> connections = findChildren<SimConnection*>(Qt::FindDirectChildrenOnly);
    for (SimConnection* connection : connections)
        connection->close();
}

int SimPanelServer::connectionCount() const
{
    return int(findChildren<SimConnection*>(Qt::FindDirectChildrenOnly).size());
}

void SimPanelServer::onNewConnection()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        if (!m_panel) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        new SimConnection(socket, m_panel, this);
    }
}
