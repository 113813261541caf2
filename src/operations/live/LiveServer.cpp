#include "operations/live/LiveServer.h"

#include "operations/live/LiveBatchWriter.h"
#include "operations/live/LiveConnection.h"
#include "operations/panels/PanelRoster.h"
#include "protocol/BroadcastFrames.h"
#include "protocol/LiveFrameCutter.h"
#include "protocol/LiveFrames.h"
#include "protocol/StatusFrames.h"

#include <QNetworkDatagram>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

namespace {

// The live switches are read again at most this often while passages arrive.
constexpr int RulesRefreshMs = 1000;
// A socket's unread bytes kept by Qt at most; the rest waits in the system's buffer.
constexpr qint64 SocketBuffer = 256 * 1024;

// How often silent connections are looked for: a fraction of the shortest time-out, so one is
// closed soon after its time, yet never busier than a few times a second.
int silenceCheckMs(const LiveSettings& settings)
{
    int shortest = 0;
    for (const int limit : { settings.unidentifiedTimeoutMs, settings.identifiedTimeoutMs }) {
        if (limit > 0)
            shortest = shortest == 0 ? limit : qMin(shortest, limit);
    }
    return shortest == 0 ? 0 : qBound(20, shortest / 4, 1000);
}

} // namespace

LiveServer::LiveServer(const LiveSettings& settings, PanelRoster* roster)
    : m_settings(settings)
    , m_roster(roster)
{ }

LiveServer::~LiveServer()
{
    qDeleteAll(m_connections);
}

bool LiveServer::open(const Database& mainDb, QString* error)
{
    m_db = mainDb.cloneForThread(u"live"_s, error);
    if (!m_db.isOpen())
        return false;
    m_writer = std::make_unique<LiveBatchWriter>(m_db);
    m_rules = LiveRules::read(m_db);
    m_rulesAge.start();

    m_batchTimer = new QTimer(this);
    m_batchTimer->setSingleShot(true);
    m_batchTimer->setTimerType(Qt::PreciseTimer);
    connect(m_batchTimer, &QTimer::timeout, this, &LiveServer::storePending);

    if (m_settings.listenTcp) {
        m_tcp = new QTcpServer(this);
        if (!m_tcp->listen(m_settings.listenAddress, m_settings.tcpPort)) {
            if (error)
                *error = m_tcp->errorString();
            close();
            return false;
        }
        connect(m_tcp, &QTcpServer::newConnection, this, &LiveServer::onNewConnection);
        if (const int every = silenceCheckMs(m_settings); every > 0) {
            m_silenceTimer = new QTimer(this);
            connect(m_silenceTimer, &QTimer::timeout, this, &LiveServer::closeSilent);
            m_silenceTimer->start(every);
        }
    }
    if (m_settings.listenUdp) {
        m_udp = new QUdpSocket(this);
        if (!m_udp->bind(m_settings.listenAddress, m_settings.udpPort, QUdpSocket::ShareAddress)) {
            if (error)
                *error = m_udp->errorString();
            close();
            return false;
        }
        connect(m_udp, &QUdpSocket::readyRead, this, &LiveServer::onDatagrams);
    }
    return true;
}

void LiveServer::close()
{
    // Whatever already arrived is read and stored before the sockets go.
    for (QTcpSocket* socket : m_connections.keys())
        onReadyRead(socket);
    if (m_udp)
        onDatagrams();
    storePending();
    for (auto it = m_connections.cbegin(); it != m_connections.cend(); ++it) {
        it.key()->disconnect(this);
        it.key()->abort();
        it.key()->deleteLater();
        delete it.value();
    }
    m_connections.clear();
    delete m_tcp;
    m_tcp = nullptr;
    delete m_udp;
    m_udp = nullptr;
    delete m_batchTimer;
    m_batchTimer = nullptr;
    delete m_silenceTimer;
    m_silenceTimer = nullptr;
    m_writer.reset();
    m_db.close();
}

void LiveServer::flush()
{
    for (QTcpSocket* socket : m_connections.keys())
        onReadyRead(socket);
    if (m_udp)
        onDatagrams();
    storePending();
}

void LiveServer::reloadRules()
{
    if (!m_db.isOpen())
        return;
    m_rules = LiveRules::read(m_db);
    m_rulesAge.restart();
}

quint16 LiveServer::tcpPort() const
{
    return m_tcp ? m_tcp->serverPort() : 0;
}

quint16 LiveServer::udpPort() const
{
    return m_udp ? m_udp->localPort() : 0;
}

LiveCounters LiveServer::counters() const
{
    QMutexLocker lock(&m_countersMutex);
    return m_counters;
}

void LiveServer::onNewConnection()
{
    while (QTcpSocket* socket = m_tcp->nextPendingConnection()) {
        if (m_connections.size() >= m_settings.maxConnections && !makeRoom()) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        socket->setReadBufferSize(SocketBuffer);
        // Panels are silent for hours; the system's probes find the ones that vanished.
        socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
        auto* connection = new LiveConnection(socket);
        m_connections.insert(socket, connection);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onReadyRead(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] { onDisconnected(socket); });
        QMutexLocker lock(&m_countersMutex);
        m_counters.connections = static_cast<int>(m_connections.size());
    }
}

bool LiveServer::makeRoom()
{
    // The one least like a panel gives way: a connection that never sent a valid frame before a
    // panel's, and among those alike the longest silent.
    QTcpSocket* victim = nullptr;
    bool victimIdentified = true;
    qint64 victimSilent = -1;
    for (auto it = m_connections.cbegin(); it != m_connections.cend(); ++it) {
        const bool identified = it.value()->isIdentified();
        const qint64 silent = it.value()->silentMs();
        if (!victim || (victimIdentified && !identified) || (identified == victimIdentified && silent > victimSilent)) {
            victim = it.key();
            victimIdentified = identified;
            victimSilent = silent;
        }
    }
    if (!victim)
        return false;
    {
        QMutexLocker lock(&m_countersMutex);
        ++m_counters.connectionsEvicted;
    }
    closeConnection(victim);
    return true;
}

bool LiveServer::overstayed(const LiveConnection& connection) const
{
    const int limit = connection.isIdentified() ? m_settings.identifiedTimeoutMs : m_settings.unidentifiedTimeoutMs;
    return limit > 0 && connection.silentMs() >= limit;
}

void LiveServer::closeSilent()
{
    QList<QTcpSocket*> silent;
    for (auto it = m_connections.cbegin(); it != m_connections.cend(); ++it) {
        if (overstayed(*it.value()))
            silent << it.key();
    }
    for (QTcpSocket* socket : silent) {
        // A frame that arrived but was not read yet still counts.
        onReadyRead(socket);
        const LiveConnection* connection = m_connections.value(socket);
        if (!connection || !overstayed(*connection))
            continue;
        {
            QMutexLocker lock(&m_countersMutex);
            ++m_counters.connectionsTimedOut;
        }
        closeConnection(socket);
    }
}

void LiveServer::closeConnection(QTcpSocket* socket)
{
    onReadyRead(socket);
    socket->abort();
    // abort() reports the drop itself when the socket was still connected; this covers the rest.
    onDisconnected(socket);
}

void LiveServer::onReadyRead(QTcpSocket* socket)
{
    LiveConnection* connection = m_connections.value(socket);
    if (!connection)
        return;
    int dropped = 0;
    const QList<QByteArray> frames = connection->readFrames(&dropped);
    if (dropped) {
        QMutexLocker lock(&m_countersMutex);
        m_counters.framesDropped += dropped;
    }
    for (const QByteArray& frame : frames)
        takeFrame(frame, connection);
}

void LiveServer::onDisconnected(QTcpSocket* socket)
{
    LiveConnection* connection = m_connections.take(socket);
    if (!connection)
        return;
    // Frames that arrived with the end of the connection are still taken.
    int dropped = 0;
    for (const QByteArray& frame : connection->readFrames(&dropped))
        takeFrame(frame, connection);
    const qint32 panel = connection->panelNumber();
    delete connection;
    socket->disconnect(this);
    socket->deleteLater();
    {
        QMutexLocker lock(&m_countersMutex);
        m_counters.connections = static_cast<int>(m_connections.size());
    }
    if (panel > 0) {
        // Passages that came before the drop are stored before anyone reacts to it.
        storePending();
        Q_EMIT panelDisconnected(panel);
    }
}

void LiveServer::onDatagrams()
{
    while (m_udp && m_udp->hasPendingDatagrams()) {
        const QByteArray data = m_udp->receiveDatagram().data();
        if (data.contains('%')) {
            LiveFrameCutter cutter;
            cutter.feed(data);
            QByteArray frame;
            for (;;) {
                const LiveFrameCutter::Result result = cutter.next(frame);
                if (result == LiveFrameCutter::Result::NeedMore)
                    break;
                if (result == LiveFrameCutter::Result::Frame)
                    takeFrame(frame, nullptr);
            }
        }
        if (data.contains('$')) {
            // Status answers to the status request share the port.
            for (const QByteArray& piece : BroadcastFrames::splitDatagram(data)) {
                PanelStatus status;
                if (StatusFrames::parseAnswer(piece, status) == ParseStatus::Valid)
                    takeStatus(status);
            }
        }
    }
}

void LiveServer::takeFrame(const QByteArray& frame, LiveConnection* from)
{
    {
        QMutexLocker lock(&m_countersMutex);
        ++m_counters.framesReceived;
    }
    switch (LiveFrames::kindOf(frame)) {
    case LiveFrames::Kind::Status: {
        PanelStatus status;
        if (StatusFrames::parseFrame(frame, status) != ParseStatus::Valid)
            break;
        noteValid(from, status.panelNumber);
        takeStatus(status);
        return;
    }
    case LiveFrames::Kind::CardEvent: {
        CardEvent event;
        if (LiveFrames::parseCardEvent(frame, event) != ParseStatus::Valid || event.panelNumber < 1)
            break;
        noteValid(from, event.panelNumber);
        if (m_rulesAge.elapsed() > RulesRefreshMs)
            reloadRules();
        QMutexLocker lock(&m_countersMutex);
        ++m_counters.passagesReceived;
        if (!m_rules.keeps(event.code)) {
            ++m_counters.passagesFiltered;
            return;
        }
        lock.unlock();
        if (m_pending.size() >= m_settings.maxPending)
            m_pending.removeFirst();
        m_pending.append(event);
        schedule();
        return;
    }
    case LiveFrames::Kind::Unknown:
        break;
    }
    QMutexLocker lock(&m_countersMutex);
    ++m_counters.framesDropped;
}

void LiveServer::takeStatus(const PanelStatus& status)
{
    LiveStatusChange change;
    change.panelNumber = status.panelNumber;
    change.status = status;
    if (m_roster) {
        if (const auto entry = m_roster->entryForPanel(status.panelNumber)) {
            change.position = entry->position;
            m_roster->doorStatus().apply(entry->position, status);
            m_roster->notifyDoorStatusChanged();
        }
    }
    {
        QMutexLocker lock(&m_countersMutex);
        ++m_counters.statusFrames;
    }
    Q_EMIT statusChanged(change);
}

void LiveServer::noteValid(LiveConnection* from, qint32 panelNumber)
{
    if (from && from->noteValidFrame(panelNumber))
        Q_EMIT panelConnected(panelNumber);
}

void LiveServer::schedule()
{
    if (m_pending.size() >= m_settings.batchRows) {
        storePending();
        return;
    }
    if (m_batchTimer && !m_batchTimer->isActive())
        m_batchTimer->start(m_settings.batchIntervalMs);
}

void LiveServer::storePending()
{
    if (m_batchTimer)
        m_batchTimer->stop();
    if (m_pending.isEmpty() || !m_writer)
        return;
    LiveBatchWriter::Outcome outcome;
    QString why;
    if (!m_writer->store(m_pending, &outcome, &why)) {
        {
            QMutexLocker lock(&m_countersMutex);
            ++m_counters.storeFailures;
        }
        Q_EMIT storeFailed(why);
        // Kept and tried again; the panel also still holds them for the back-fill.
        if (m_batchTimer)
            m_batchTimer->start(qMax(m_settings.batchIntervalMs, 500));
        return;
    }
    m_pending.clear();
    {
        QMutexLocker lock(&m_countersMutex);
        m_counters.passagesStored += outcome.stored.size();
        m_counters.passagesDuplicate += outcome.duplicates;
        ++m_counters.batchesCommitted;
    }
    if (!outcome.stored.isEmpty())
        Q_EMIT passagesStored(outcome.stored);
}
