#pragma once

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>
#include <functional>

class Clock;
class Database;
class LiveMonitor;
class PanelLink;
class PanelRoster;

// Fetches the records a panel stored while its live link was down, without erasing them, so
// that every passage of the gap reaches AccessDatas once (those already stored are skipped).
// Panels are fetched one at a time through the panel worker; a busy worker or a failing panel is
// tried again later. Lives on the window thread.
class RecordBackfill : public QObject
{
    Q_OBJECT

public:
    using Job = std::function<void(PanelLink& link, Database& db)>;
    // Hands a job to the panel worker; false when the worker is busy or not running.
    using Submit = std::function<bool(Job job)>;

    // clock: the station clock, for what a fetch notes as received.
    RecordBackfill(PanelRoster& roster, const Clock& clock, Submit submit, QObject* parent = nullptr);
    ~RecordBackfill() override;

    // Wait before trying again after a busy worker or a failed panel.
    void setRetryIntervalMs(int ms);
    // Back-fills a panel whose pushed connection comes back after it was lost.
    void watch(LiveMonitor& monitor);

    // Queues one panel (by number); queued twice it is fetched once.
    void request(qint32 panelNumber);
    // Queues every usable roster panel: at start-up, the station was not listening before.
    void requestAll();
    QList<qint32> pending() const;
    bool isIdle() const;

Q_SIGNALS:
    // One panel fetched: records downloaded and how many were new.
    void panelFetched(qint32 panelNumber, int downloaded, int added);
    void panelFailed(qint32 panelNumber, const QString& reason);
    // Nothing is queued or running any more.
    void idle();

private:
    void tryNext();
    void finished(qint32 panelNumber, bool ok, int downloaded, int added, const QString& reason);
    void onConnected(qint32 panelNumber);
    void onDisconnected(qint32 panelNumber);

    PanelRoster& m_roster;
    const Clock& m_clock;
    Submit m_submit;
    QList<qint32> m_queue;
    qint32 m_running = 0;
    QHash<qint32, bool> m_lost; // panels whose live connection dropped
    QTimer m_retry;
    int m_retryMs = 1000;
};
