#include "SimulatorHost.h"

#include "SimControlServer.h"
#include "SimPanel.h"
#include "SimPanelServer.h"
#include "SimPushClient.h"
#include "SimUdpResponder.h"

#include <QMetaObject>
#include <QMutexLocker>
#include <QTimer>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

SimulatorHost::SimulatorHost(QObject* parent)
    : QObject(parent)
{
    m_thread.setObjectName(u"panelsim"_s);
}

SimulatorHost::~SimulatorHost()
{
    stop();
}

void SimulatorHost::runOnNetwork(const std::function<void()>& work) const
{
    if (QThread::currentThread() == &m_thread)
        work();
    else
        QMetaObject::invokeMethod(m_context, work, Qt::BlockingQueuedConnection);
}

bool SimulatorHost::start(const Options& options, QString* error)
{
    if (m_running)
        return true;
    m_options = options;
    m_context = new QObject;
    m_context->moveToThread(&m_thread);
    m_thread.start();
    bool ok = true;
    QString why;
    runOnNetwork([&] {
        const auto panelList = [this] { return panels(); };
        if (options.statusPort >= 0) {
            m_status = new SimUdpResponder(panelList, m_context);
            ok = m_status->bind(options.address, quint16(options.statusPort), &why);
            m_statusPort = m_status->port();
        }
        if (ok && options.searchPort >= 0) {
            m_search = new SimUdpResponder(panelList, m_context);
            ok = m_search->bind(options.address, quint16(options.searchPort), &why);
            m_searchPort = m_search->port();
        }
        if (ok && options.controlPort >= 0) {
            m_control = new SimControlServer(this, m_context);
            ok = m_control->listen(options.address, quint16(options.controlPort), &why);
            m_controlPort = m_control->port();
        }
        m_tick = new QTimer(m_context);
        m_tick->setInterval(1000);
        connect(m_tick, &QTimer::timeout, m_context, [this] { tickAll(); });
        m_tick->start();
    });
    m_running = true;
    if (!ok) {
        if (error)
            *error = why;
        stop();
        return false;
    }
    return true;
}

void SimulatorHost::stop()
{
    if (!m_running)
        return;
    runOnNetwork([this] {
        QList<SimPanel*> panelList;
        {
            QMutexLocker lock(&m_mutex);
            panelList = m_panels;
            m_panels.clear();
        }
        // Sockets go before the panels they ask for replies.
        const QObjectList children = m_context->children();
        qDeleteAll(children);
        qDeleteAll(panelList);
    });
    m_servers.clear();
    m_rateTimers.clear();
    m_status = nullptr;
    m_search = nullptr;
    m_control = nullptr;
    m_tick = nullptr;
    m_thread.quit();
    m_thread.wait();
    delete m_context;
    m_context = nullptr;
    m_running = false;
}

bool SimulatorHost::isRunning() const
{
    return m_running;
}

SimPanel* SimulatorHost::addPanel(const SimPanelConfig& config, QString* error)
{
    if (!m_running) {
        if (error)
            *error = u"simulator not started"_s;
        return nullptr;
    }
    if (panel(config.number)) {
        if (error)
            *error = u"panel number already in use"_s;
        return nullptr;
    }
    SimPanel* created = nullptr;
    QString why;
    runOnNetwork([&] {
        auto* server = new SimPanelServer(m_context);
        if (!server->listen(m_options.address, config.port, &why)) {
            delete server;
            return;
        }
        created = new SimPanel(config.number, config.serial, server->port(), config.pushHost, config.pushPort);
        server->attach(created);
        auto* push = new SimPushClient(server);
        connect(created, &SimPanel::pushFrame, push, &SimPushClient::send);
        m_servers.insert(created, server);
        QMutexLocker lock(&m_mutex);
        m_panels.append(created);
    });
    if (!created && error)
        *error = why;
    return created;
}

SimPanel* SimulatorHost::panel(int number) const
{
    QMutexLocker lock(&m_mutex);
    for (SimPanel* p : m_panels) {
        if (p->number() == number)
            return p;
    }
    return nullptr;
}

QList<SimPanel*> SimulatorHost::panels() const
{
    QMutexLocker lock(&m_mutex);
    return m_panels;
}

QHostAddress SimulatorHost::address() const
{
    return m_options.address;
}

quint16 SimulatorHost::statusPort() const
{
    return m_statusPort;
}

quint16 SimulatorHost::searchPort() const
{
    return m_searchPort;
}

quint16 SimulatorHost::controlPort() const
{
    return m_controlPort;
}

void SimulatorHost::setPassageRate(int number, double perSecond)
{
    if (!m_running)
        return;
    const QList<SimPanel*> targets = number == 0 ? panels() : QList<SimPanel*>{ panel(number) };
    runOnNetwork([&] {
        for (SimPanel* target : targets) {
            if (!target)
                continue;
            QTimer* timer = m_rateTimers.value(target);
            if (perSecond <= 0) {
                delete timer;
                m_rateTimers.remove(target);
                continue;
            }
            if (!timer) {
                timer = new QTimer(m_servers.value(target));
                m_rateTimers.insert(target, timer);
            }
            // Fast rates fire every millisecond and present several cards per round.
            const int interval = std::max(1, int(1000.0 / perSecond));
            const int perRound = std::max(1, int(std::lround(perSecond * interval / 1000.0)));
            timer->disconnect();
            connect(timer, &QTimer::timeout, target, [target, perRound] {
                for (int i = 0; i < perRound; ++i)
                    target->presentRandomCard();
            });
            timer->start(interval);
        }
    });
}

int SimulatorHost::openConnections(int number) const
{
    SimPanel* target = panel(number);
    int count = 0;
    if (target && m_running)
        runOnNetwork([&] {
            if (SimPanelServer* server = m_servers.value(target))
                count = server->connectionCount();
        });
    return count;
}

void SimulatorHost::tickAll()
{
    for (SimPanel* p : panels())
        p->tick();
}
