#include "operations/live/LiveMonitor.h"

#include "operations/live/LiveServer.h"
#include "store/Clock.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

LiveMonitor::LiveMonitor(const Clock& clock, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
{
    qRegisterMetaType<RecordRow>();
    qRegisterMetaType<QList<RecordRow>>();
    qRegisterMetaType<LiveStatusChange>();
    m_thread.setObjectName(u"live"_s);
}

LiveMonitor::~LiveMonitor()
{
    stop();
}

bool LiveMonitor::start(const Database& db, const LiveSettings& settings, PanelRoster* roster, QString* error)
{
    if (m_server)
        return true;
    auto* server = new LiveServer(settings, roster);
    server->moveToThread(&m_thread);
    // The server's signals are emitted on the live thread; these run there too and hand on.
    connect(
        server, &LiveServer::passagesStored, this,
        [this](const QList<RecordRow>& rows) {
            noteArrivals(rows);
            Q_EMIT passagesStored(rows);
        },
        Qt::DirectConnection);
    connect(server, &LiveServer::statusChanged, this, &LiveMonitor::statusChanged, Qt::DirectConnection);
    connect(
        server, &LiveServer::panelConnected, this,
        [this](qint32 panel) {
            noteConnected(panel, true);
            Q_EMIT panelConnected(panel);
        },
        Qt::DirectConnection);
    connect(
        server, &LiveServer::panelDisconnected, this,
        [this](qint32 panel) {
            noteConnected(panel, false);
            Q_EMIT panelDisconnected(panel);
        },
        Qt::DirectConnection);
    connect(server, &LiveServer::storeFailed, this, &LiveMonitor::storeFailed, Qt::DirectConnection);
    m_thread.start();

    bool ok = false;
    QString why;
    QMetaObject::invokeMethod(
        server,
        [&] {
            ok = server->open(db, &why);
            m_tcpPort = server->tcpPort();
            m_udpPort = server->udpPort();
        },
        Qt::BlockingQueuedConnection);
    if (!ok) {
        m_thread.quit();
        m_thread.wait();
        delete server;
        if (error)
            *error = why;
        return false;
    }
    m_server = server;
    return true;
}

void LiveMonitor::stop()
{
    if (!m_server)
        return;
    LiveServer* server = m_server;
    QMetaObject::invokeMethod(
        server, [server] { server->close(); }, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
    m_server = nullptr;
    delete server;
    QMutexLocker lock(&m_mutex);
    m_connections.clear();
}

bool LiveMonitor::isRunning() const
{
    return m_server != nullptr;
}

quint16 LiveMonitor::tcpPort() const
{
    return m_tcpPort;
}

quint16 LiveMonitor::udpPort() const
{
    return m_udpPort;
}

void LiveMonitor::flush()
{
    if (!m_server)
        return;
    LiveServer* server = m_server;
    QMetaObject::invokeMethod(
        server, [server] { server->flush(); }, Qt::BlockingQueuedConnection);
}

void LiveMonitor::reloadRules()
{
    if (!m_server)
        return;
    LiveServer* server = m_server;
    QMetaObject::invokeMethod(
        server, [server] { server->reloadRules(); }, Qt::QueuedConnection);
}

QDateTime LiveMonitor::lastArrival(qint32 panelNumber) const
{
    QMutexLocker lock(&m_mutex);
    return m_lastArrival.value(panelNumber);
}

QHash<qint32, QDateTime> LiveMonitor::lastArrivals() const
{
    QMutexLocker lock(&m_mutex);
    return m_lastArrival;
}

QList<qint32> LiveMonitor::connectedPanels() const
{
    QMutexLocker lock(&m_mutex);
    QList<qint32> panels;
    for (auto it = m_connections.cbegin(); it != m_connections.cend(); ++it) {
        if (it.value() > 0)
            panels << it.key();
    }
    std::sort(panels.begin(), panels.end());
    return panels;
}

LiveCounters LiveMonitor::counters() const
{
    return m_server ? m_server->counters() : LiveCounters();
}

void LiveMonitor::noteArrivals(const QList<RecordRow>& rows)
{
    const QDateTime now = m_clock.now();
    QMutexLocker lock(&m_mutex);
    for (const RecordRow& row : rows)
        m_lastArrival.insert(row.panelId, now);
}

void LiveMonitor::noteConnected(qint32 panelNumber, bool connected)
{
    QMutexLocker lock(&m_mutex);
    int& count = m_connections[panelNumber];
    count = qMax(0, count + (connected ? 1 : -1));
}
