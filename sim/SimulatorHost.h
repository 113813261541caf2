#pragma once

#include "SimPanelConfig.h"

#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QThread>
#include <functional>

class SimControlServer;
class SimPanel;
class SimPanelServer;
class SimPushClient;
class SimUdpResponder;
class QTimer;

// Runs any number of simulated panels with their sockets on a thread of its own, so that a test in
// the same process can block on a client socket without stalling the panels.
class SimulatorHost : public QObject
{
    Q_OBJECT

public:
    struct Options
    {
        QHostAddress address{ QHostAddress::LocalHost };
        int statusPort = 11000; // 0: any free port; -1: none
        int searchPort = 4113;
        int controlPort = -1;
    };

    explicit SimulatorHost(QObject* parent = nullptr);
    ~SimulatorHost() override;

    bool start(const Options& options, QString* error = nullptr);
    void stop();
    bool isRunning() const;

    SimPanel* addPanel(const SimPanelConfig& config, QString* error = nullptr);
    // The panel that answers to this number now (a settings write can renumber a panel).
    SimPanel* panel(int number) const;
    QList<SimPanel*> panels() const;
    QHostAddress address() const;
    quint16 statusPort() const;
    quint16 searchPort() const;
    quint16 controlPort() const;
    // Card presentations per second at one panel, or at every panel with number 0; 0 stops them.
    void setPassageRate(int number, double perSecond);
    int openConnections(int number) const;

Q_SIGNALS:
    void quitRequested();

private:
    void runOnNetwork(const std::function<void()>& work) const;
    void tickAll();

    QThread m_thread;
    QObject* m_context = nullptr;
    Options m_options;
    mutable QMutex m_mutex;
    QList<SimPanel*> m_panels;
    bool m_running = false;
    // Owned by the network thread.
    QHash<SimPanel*, SimPanelServer*> m_servers;
    QHash<SimPanel*, QTimer*> m_rateTimers;
    SimUdpResponder* m_status = nullptr;
    SimUdpResponder* m_search = nullptr;
    SimControlServer* m_control = nullptr;
    QTimer* m_tick = nullptr;
    quint16 m_statusPort = 0;
    quint16 m_searchPort = 0;
    quint16 m_controlPort = 0;
};
