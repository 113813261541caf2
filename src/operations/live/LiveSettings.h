#pragma once

#include <QHostAddress>

// Where the live monitor listens and how it stores. In the field it listens on every address at
// the port the panels are told as their remote port, and on UDP 11001; tests use 127.0.0.1 and
// free ports (0 picks one; see LiveMonitor::tcpPort()).
struct LiveSettings
{
    QHostAddress listenAddress = QHostAddress(QHostAddress::Any);
    // The panels' "Panel Remote TCP Port". 0 picks a free port.
    quint16 tcpPort = 0;
    bool listenTcp = true;
    // Status datagrams (and frames sent by UDP). 0 picks a free port.
    quint16 udpPort = 11001;
    bool listenUdp = true;
    // Stored rows are committed at least this often while passages arrive...
    int batchIntervalMs = 50;
    // ...or as soon as this many wait.
    int batchRows = 500;
    // Connections open at once. A further one takes the place of the one least like a panel
    // (never a valid frame first, then the longest silent), so idle or garbage clients cannot
    // lock a panel out.
    int maxConnections = 256;
    // A connection that has not sent one valid frame this long after it opened is closed:
    // garbage and unfinished frames do not count. 0 keeps it.
    int unidentifiedTimeoutMs = 20000;
    // A panel's connection is closed after this long without a valid frame (0: kept). Panels
    // may be silent for hours and every reconnection fetches their records again, so it is
    // kept by default; TCP keep-alive ends the connections of panels that vanished.
    int identifiedTimeoutMs = 0;
    // Passages kept while the database refuses them; beyond this the oldest are given up (the
    // panel still holds them, and the back-fill fetches them again).
    int maxPending = 200000;
};
