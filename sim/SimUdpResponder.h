#pragma once

#include <QHostAddress>
#include <QObject>
#include <QUdpSocket>
#include <functional>

class SimPanel;

// One UDP port of the simulator (status or search). Every panel answers the status and search
// requests to the sender's address and port, takes the alarm reset, and the panel whose serial
// matches takes a settings record.
class SimUdpResponder : public QObject
{
    Q_OBJECT

public:
    using PanelList = std::function<QList<SimPanel*>()>;

    explicit SimUdpResponder(PanelList panels, QObject* parent = nullptr);

    bool bind(const QHostAddress& address, quint16 port, QString* error);
    quint16 port() const;

private:
    void onReadyRead();

    QUdpSocket m_socket;
    PanelList m_panels;
};
