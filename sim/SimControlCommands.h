#pragma once

#include <QString>
#include <QStringList>

class SimulatorHost;

// The line commands of the control port. Each command is one line and gets one line back,
// starting "OK" or "ERR".
class SimControlCommands
{
public:
    static QString execute(SimulatorHost& host, const QString& line);
    // One line per command with its arguments, for --help and the documentation.
    static QStringList usage();
};
