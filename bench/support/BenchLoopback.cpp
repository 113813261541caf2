#include "BenchLoopback.h"

#include "protocol/PanelLink.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QTcpSocket>

namespace BenchLoopback {

SimPanel* startPanel(SimulatorHost& host, QString* error)
{
    SimulatorHost::Options options;
    options.statusPort = -1;
    options.searchPort = -1;
    QString reason;
    if (!host.start(options, &reason)) {
        *error = QStringLiteral("cannot start the simulator: ") + reason;
        return nullptr;
    }
    SimPanel* panel = host.addPanel({ 7, 0x12AB, 0, QString(), 0 }, &reason);
    if (!panel)
        *error = QStringLiteral("cannot start a panel: ") + reason;
    return panel;
}

bool openLink(PanelLink& link, quint16 port)
{
    PanelLink::Settings settings;
    settings.pacingMs = 0;
    link.setSettings(settings);
    return link.ConnectPanel(QStringLiteral("127.0.0.1"), port);
}

bool exchange(QTcpSocket& socket, const QByteArray& request, qsizetype length, int waitMs)
{
    socket.write(request);
    qsizetype received = 0;
    while (received < length) {
        if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(waitMs))
            return false;
        received += socket.readAll().size();
    }
    return true;
}

} // namespace BenchLoopback
