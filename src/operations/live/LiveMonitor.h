#pragma once

#include "operations/live/LiveCounters.h"
#include "operations/live/LiveSettings.h"
#include "operations/live/LiveStatusChange.h"
#include "operations/records/RecordRow.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QThread>

class Clock;
class Database;
class LiveServer;
class PanelRoster;

// Watches the panels live on a thread of its own: accepts the panels' pushed TCP connections and
// the status datagrams, cuts the frames, stores passages in small batches and enters status
// frames into the roster's door status table. The signals carry what was stored, so the window
// appends rows without querying again; they are delivered on the receiver's thread.
class LiveMonitor : public QObject
{
    Q_OBJECT

public:
    // clock: the station time noted when a panel's passages arrive.
    explicit LiveMonitor(const Clock& clock, QObject* parent = nullptr);
    ~LiveMonitor() override;

    // Opens a connection of its own to the database db is open on and starts listening. The
    // roster (optional, must outlive the monitor) receives the door states of status frames.
    bool start(const Database& db, const LiveSettings& settings, PanelRoster* roster = nullptr,
               QString* error = nullptr);
    // Stores what has arrived, closes every socket and ends the thread.
    void stop();
    bool isRunning() const;

    // The ports actually listened on (useful when the settings asked for any free port).
    quint16 tcpPort() const;
    quint16 udpPort() const;

    // Stores the passages that arrived so far and waits until they are committed.
    void flush();
    // Reads the live switches (LiveAPBInvalid, LiveDeniedInvalid, LiveUnknownInvalid) again.
    void reloadRules();

    // When the last passage of that panel arrived live (station time); invalid when none did.
    QDateTime lastArrival(qint32 panelNumber) const;
    QHash<qint32, QDateTime> lastArrivals() const;
    // Panels that have a pushed connection open now (known once they sent a frame).
    QList<qint32> connectedPanels() const;
    LiveCounters counters() const;

Q_SIGNALS:
    // Rows committed to AccessDatas, in arrival order, with their "Kayit No".
    void passagesStored(const QList<RecordRow>& rows);
    void statusChanged(const LiveStatusChange& change);
    // A panel's pushed connection was identified (first frame) or closed.
    void panelConnected(qint32 panelNumber);
    void panelDisconnected(qint32 panelNumber);
    // A batch could not be stored; it is kept and tried again.
    void storeFailed(const QString& error);

private:
    void noteArrivals(const QList<RecordRow>& rows);
    void noteConnected(qint32 panelNumber, bool connected);

    const Clock& m_clock;
    QThread m_thread;
    LiveServer* m_server = nullptr;
    quint16 m_tcpPort = 0;
    quint16 m_udpPort = 0;
    mutable QMutex m_mutex;
    QHash<qint32, QDateTime> m_lastArrival;
    QHash<qint32, int> m_connections;
};
