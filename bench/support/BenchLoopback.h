#pragma once

#include <QByteArray>
#include <QString>

class PanelLink;
class QTcpSocket;
class SimPanel;
class SimulatorHost;

// Setup and transfer steps the loopback benchmarks share.
namespace BenchLoopback {

// Starts `host` without its status and search ports and adds panel 7 (serial 12AB); returns the
// panel, or nullptr with `error` saying which step failed.
SimPanel* startPanel(SimulatorHost& host, QString* error);

// Opens `link` to the panel on 127.0.0.1:`port` with no pause between exchanges.
bool openLink(PanelLink& link, quint16 port);

// Writes `request`, then reads until `length` bytes have come back; false when the socket stays
// quiet for `waitMs`.
bool exchange(QTcpSocket& socket, const QByteArray& request, qsizetype length, int waitMs);

} // namespace BenchLoopback
