#include "SimUdpResponder.h"

#include "SimFrameCutter.h"
#include "SimPanel.h"

#include <QNetworkDatagram>

SimUdpResponder::SimUdpResponder(PanelList panels, QObject* parent)
    : QObject(parent)
    , m_panels(std::move(panels))
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &SimUdpResponder::onReadyRead);
}

bool SimUdpResponder::bind(const QHostAddress& address, quint16 port, QString* error)
{
    if (m_socket.bind(address, port))
        return true;
    if (error)
        *error = m_socket.errorString();
    return false;
}

quint16 SimUdpResponder::port() const
{
    return m_socket.localPort();
}

void SimUdpResponder::onReadyRead()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram(65536);
        if (!datagram.isValid())
            continue;
        SimFrameCutter cutter;
        const QList<QByteArray> frames = cutter.feed(datagram.data());
        const QList<SimPanel*> panels = m_panels();
        for (const QByteArray& frame : frames) {
            for (SimPanel* panel : panels) {
                const QByteArray answer = panel->handleDatagram(frame);
                if (!answer.isEmpty())
                    m_socket.writeDatagram(answer, datagram.senderAddress(), quint16(datagram.senderPort()));
            }
        }
    }
}
