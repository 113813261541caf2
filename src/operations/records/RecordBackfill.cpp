#include "operations/records/RecordBackfill.h"

#include "operations/live/LiveMonitor.h"
#include "operations/panels/PanelRoster.h"
#include "operations/records/RecordFetch.h"
#include "protocol/PanelLink.h"

#include <QPointer>

using namespace Qt::StringLiterals;

RecordBackfill::RecordBackfill(PanelRoster& roster, const Clock& clock, Submit submit, QObject* parent)
    : QObject(parent)
    , m_roster(roster)
    , m_clock(clock)
    , m_submit(std::move(submit))
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &RecordBackfill::tryNext);
}

RecordBackfill::~RecordBackfill() = default;

void RecordBackfill::setRetryIntervalMs(int ms)
{
    m_retryMs = qMax(0, ms);
}

void RecordBackfill::watch(LiveMonitor& monitor)
{
    connect(&monitor, &LiveMonitor::panelDisconnected, this, &RecordBackfill::onDisconnected);
    connect(&monitor, &LiveMonitor::panelConnected, this, &RecordBackfill::onConnected);
}

void RecordBackfill::request(qint32 panelNumber)
{
    if (panelNumber <= 0 || m_queue.contains(panelNumber))
        return;
    m_queue.append(panelNumber);
    if (m_running == 0 && !m_retry.isActive())
        QMetaObject::invokeMethod(this, &RecordBackfill::tryNext, Qt::QueuedConnection);
}

void RecordBackfill::requestAll()
{
    for (const PanelEntry& entry : m_roster.entries()) {
        if (entry.isEligible() && m_roster.isReachable(entry.position))
            request(entry.panelNumber);
    }
}

QList<qint32> RecordBackfill::pending() const
{
    QList<qint32> panels = m_queue;
    if (m_running > 0)
        panels.prepend(m_running);
    return panels;
}

bool RecordBackfill::isIdle() const
{
    return m_queue.isEmpty() && m_running == 0;
}

void RecordBackfill::tryNext()
{
    if (m_running != 0 || m_queue.isEmpty())
        return;
    const qint32 panel = m_queue.first();
    const auto entry = m_roster.entryForPanel(panel);
    if (!entry || !entry->isEligible()) {
        m_queue.removeFirst();
        Q_EMIT panelFailed(panel, u"not in the panel list"_s);
        if (isIdle())
            Q_EMIT idle();
        else
            tryNext();
        return;
    }
    QPointer<RecordBackfill> self(this);
    const PanelEntry target = *entry;
    const Clock* clock = &m_clock;
    const bool accepted = m_submit([self, target, clock](PanelLink& link, Database& db) {
        bool ok = false;
        int downloaded = 0;
        int added = 0;
        QString reason;
        if (!link.ConnectPanel(target.ip, target.port)) {
            reason = u"no connection"_s;
        } else {
            const RecordFetch::Result fetched
                = RecordFetch::run(link, db, *clock, target.panelNumber, target.address());
            downloaded = fetched.import.records;
            added = fetched.import.added;
            // A broken stream still stored what came; the rest is fetched on the next try.
            ok = fetched.stored && fetched.download.outcome == RecordDownloadCollector::Complete;
            reason = fetched.stored ? u"incomplete download"_s : fetched.error;
        }
        link.DisconnectPanel();
        if (self) {
            QMetaObject::invokeMethod(
                self.data(),
                [self, target, ok, downloaded, added, reason] {
                    if (self)
                        self->finished(target.panelNumber, ok, downloaded, added, reason);
                },
                Qt::QueuedConnection);
        }
    });
    if (!accepted) {
        m_retry.start(m_retryMs); // the worker is busy with an operator's work
        return;
    }
    m_queue.removeFirst();
    m_running = panel;
}

void RecordBackfill::finished(qint32 panelNumber, bool ok, int downloaded, int added, const QString& reason)
{
    m_running = 0;
    if (ok) {
        Q_EMIT panelFetched(panelNumber, downloaded, added);
    } else {
        Q_EMIT panelFailed(panelNumber, reason);
        // Tried again later, after the others.
        if (!m_queue.contains(panelNumber))
            m_queue.append(panelNumber);
        m_retry.start(m_retryMs);
        return;
    }
    if (isIdle())
        Q_EMIT idle();
    else
        tryNext();
}

void RecordBackfill::onConnected(qint32 panelNumber)
{
    if (m_lost.take(panelNumber))
        request(panelNumber);
}

void RecordBackfill::onDisconnected(qint32 panelNumber)
{
    m_lost.insert(panelNumber, true);
}
