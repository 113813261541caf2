#pragma once

#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <QTcpServer>

class SimPanel;

// The TCP port of one panel: accepts station links and gives each its own connection.
class SimPanelServer : public QObject
{
    Q_OBJECT

public:
    explicit SimPanelServer(QObject* parent = nullptr);

    // Listen first, so that a panel on an ephemeral port learns its port before it is made.
    void attach(SimPanel* panel);

    bool listen(const QHostAddress& address, quint16 port, QString* error);
    quint16 port() const;
    void dropConnections();
    int connectionCount() const;

private:
    void onNewConnection();

    QTcpServer m_server;
    QPointer<SimPanel> m_panel;
};
