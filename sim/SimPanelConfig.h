#pragma once

#include <QString>
#include <optional>

// What makes one simulated panel: its number, serial, TCP port and where it pushes live frames.
struct SimPanelConfig
{
    int number = 1;
    int serial = 0x1001;
    quint16 port = 0; // 0: any free port
    QString pushHost;
    quint16 pushPort = 0;

    // "number:serial:port[:pushhost:pushport]", serial in hex, e.g. "1:12AB:5001:127.0.0.1:6000".
    static std::optional<SimPanelConfig> parse(const QString& text, QString* error);
};
