#pragma once

#include "operations/live/LiveCounters.h"
#include "operations/live/LiveRules.h"
#include "operations/live/LiveSettings.h"
#include "operations/live/LiveStatusChange.h"
#include "operations/records/RecordRow.h"
#include "protocol/CardEvent.h"
#include "store/Database.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QObject>
#include <memory>

class LiveBatchWriter;
class LiveConnection;
class PanelRoster;
class QTcpServer;
class QTcpSocket;
class QTimer;
class QUdpSocket;

// The live monitor's work on its own thread: the listening sockets, the pushed connections, the
// frames, and the batches of passages waiting to be stored. Every method but counters() runs on
// that thread (LiveMonitor calls them there).
class LiveServer : public QObject
{
    Q_OBJECT

public:
    LiveServer(const LiveSettings& settings, PanelRoster* roster);
    ~LiveServer() override;

    // Opens this thread's database connection and the sockets.
    bool open(const Database& mainDb, QString* error);
    // Stores what is waiting, then closes the sockets and the connection.
    void close();
    void flush();
    void reloadRules();

    quint16 tcpPort() const;
    quint16 udpPort() const;
    LiveCounters counters() const;

    // Takes one cut frame as if it had arrived from that connection (0: from a datagram).
    void takeFrame(const QByteArray& frame, LiveConnection* from);

Q_SIGNALS:
    void passagesStored(const QList<RecordRow>& rows);
    void statusChanged(const LiveStatusChange& change);
    void panelConnected(qint32 panelNumber);
    void panelDisconnected(qint32 panelNumber);
    void storeFailed(const QString& error);

private:
    void onNewConnection();
    void onReadyRead(QTcpSocket* socket);
    void onDisconnected(QTcpSocket* socket);
    void onDatagrams();
    void takeStatus(const PanelStatus& status);
    void noteValid(LiveConnection* from, qint32 panelNumber);
    bool makeRoom();
    bool overstayed(const LiveConnection& connection) const;
    void closeSilent();
    // Closes a connection as if it had dropped, after taking what it already sent.
    void closeConnection(QTcpSocket* socket);
    void schedule();
    void storePending();

    LiveSettings m_settings;
    PanelRoster* m_roster;
    Database m_db;
    std::unique_ptr<LiveBatchWriter> m_writer;
    QTcpServer* m_tcp = nullptr;
    QUdpSocket* m_udp = nullptr;
    QTimer* m_batchTimer = nullptr;
    QTimer* m_silenceTimer = nullptr;
    QHash<QTcpSocket*, LiveConnection*> m_connections;
    QList<CardEvent> m_pending;
    LiveRules m_rules;
    QElapsedTimer m_rulesAge;
    mutable QMutex m_countersMutex;
    LiveCounters m_counters;
};
