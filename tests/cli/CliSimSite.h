#pragma once

#include "CliRunner.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

// Simulated panels on loopback, each also written into a command-line site's panel list.
class CliSimSite
{
public:
    explicit CliSimSite(const CliRunner& cli)
        : m_cli(cli)
    {
        SimulatorHost::Options options;
        options.statusPort = 0;
        options.searchPort = 0;
        m_started = m_host.start(options, &m_error);
    }

    bool isStarted() const { return m_started; }
    const QString& error() const { return m_error; }
    SimulatorHost& host() { return m_host; }

    // Panel `number` with the given serial; null when the simulator or the site refused it.
    SimPanel* addPanel(int number, int serial)
    {
        SimPanelConfig config;
        config.number = number;
        config.serial = serial;
        SimPanel* panel = m_host.addPanel(config, &m_error);
        if (!panel)
            return nullptr;
        const CliRunner::Result r = m_cli.runAsAdmin(
            CliRunner::words(QStringLiteral("panels add --number %1 --ip 127.0.0.1 --port %2 --serial %3")
                                 .arg(number)
                                 .arg(panel->port())
                                 .arg(QString::number(serial, 16))));
        m_error = r.all();
        return r.exitCode == 0 ? panel : nullptr;
    }

private:
    const CliRunner& m_cli;
    SimulatorHost m_host;
    QString m_error;
    bool m_started = false;
};
