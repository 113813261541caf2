#pragma once

#include <QString>

// Where the status, search and alarm broadcasts go and from which local ports. In the field the
// address is 255.255.255.255; tests and demos use 127.0.0.1 and free ports.
struct UdpSettings
{
    QString broadcastAddress = QStringLiteral("255.255.255.255");
    quint16 statusPanelPort = 11000;
    quint16 statusLocalPort = 11001;
    quint16 searchPanelPort = 4113;
    quint16 searchLocalPort = 4114;
};
