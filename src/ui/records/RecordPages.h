#pragma once

#include "operations/live/LiveMonitor.h"
#include "ui/main/PageServices.h"

#include <QObject>
#include <memory>

class AccessRecordsPage;
class MonitorPage;
class PanelRoster;
class PanelTargetBox;
class PanelWorkerBridge;
class QTabWidget;
class QWidget;
class RecordBackfill;
class RecordRetrievalBox;

// The main window's record pages and the live monitor they follow: the monitoring page and the
// access-record page as tabs, and the offline record box placed right under the record target
// choice (opsPanelOptionR) it reads. install() does it all with one call and starts the monitor;
// the pages follow the language on their own.
//
// Passages a panel made while nobody listened (the station was not running, or its pushed
// connection was down) are fetched from the panel's memory, never erased there, by a record
// back-fill running quietly on the panel worker: every panel when the monitor starts, and a
// panel whose pushed connection comes back after a loss.
class RecordPages : public QObject
{
    Q_OBJECT

public:
    RecordPages(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                PanelTargetBox& recordTarget);
    ~RecordPages() override;

    // Makes the pages (owned by the tab widget from then on) and starts the live monitor.
    static RecordPages* install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                                PanelRoster& roster, PanelTargetBox& recordTarget);

    // Wait before a panel whose back-fill failed, or found the worker busy, is tried again.
    static constexpr int BackfillRetryMs = 10000;

    // Listens on the port the panels push to (the one most panels are given) on every address.
    // The status datagrams are left to the window's status listener, which owns that port.
    bool startMonitor(QString* error = nullptr);
    // The same with settings of one's own (tests: loopback and free ports). Once listening,
    // every usable panel is queued for a back-fill.
    bool startMonitor(const LiveSettings& settings, QString* error = nullptr);
    // The port the panels are told to push to: the commonest "Panel Remote TCP Port"; 0 when none.
    quint16 panelsRemotePort() const;

    LiveMonitor& monitor() { return m_monitor; }
    // Null once the pages are closing.
    RecordBackfill* backfill() const { return m_backfill.get(); }
    MonitorPage* monitorPage() const { return m_monitorPage; }
    AccessRecordsPage* accessPage() const { return m_accessPage; }
    RecordRetrievalBox* retrievalBox() const { return m_retrieval; }

    void retranslate();

    // Puts widget right after anchor in the box layout that holds anchor (searched through the
    // nested layouts of anchor's parent); false when there is no such layout.
    static bool placeAfter(QWidget* anchor, QWidget* widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void shutDown();

    PageServices m_services;
    PanelRoster& m_roster;
    LiveMonitor m_monitor;
    std::unique_ptr<RecordBackfill> m_backfill;
    MonitorPage* m_monitorPage = nullptr;
    AccessRecordsPage* m_accessPage = nullptr;
    RecordRetrievalBox* m_retrieval = nullptr;
};
