#pragma once

#include "SimPanelConfig.h"
#include "SimulatorHost.h"

#include <QList>
#include <QString>
#include <QStringList>

// The simulator's command line and panels file.
class SimCommandLine
{
public:
    SimulatorHost::Options host;
    QList<SimPanelConfig> panels;
    double rate = 0;
    int seedUsers = 0;
    // Every panel's answer time: a fixed part and a random part of up to jitter, in ms.
    int answerDelayMs = 0;
    int answerJitterMs = 0;
    bool help = false;

    // "MS" or "MS:JITTER", each 0..60000.
    static bool parseAnswerDelay(const QString& text, int* delayMs, int* jitterMs);

    // Reads the arguments (without the program name); false with a reason on a mistake.
    bool parse(const QStringList& arguments, QString* error);
    // Panel lines "number serial port [pushhost:pushport]"; "#" starts a comment.
    bool readPanelsFile(const QString& path, QString* error);
    static QString helpText();

private:
    bool addPanel(const QString& text, QString* error);
    QString m_defaultPush;
};
