#pragma once

#include "ui/main/PageServices.h"

#include <QObject>

class AccessRecordsPage;
class LiveMonitor;
class MonitorPage;
class PanelRoster;
class PanelTargetBox;
class PanelWorkerBridge;
class QTabWidget;
class QWidget;
class RecordBackfill;
class RecordRetrievalBox;

// The main window's record pages and the station's live monitor they follow: the monitoring page
// and the access-record page as tabs, and the offline record box placed right under the record
// target choice (opsPanelOptionR) it reads. install() does it all with one call and starts the
// monitor; the pages follow the language on their own.
//
// Passages a panel made while nobody listened (the station was not running, or its pushed
// connection was down) are fetched from the panel's memory, never erased there, by the station's
// record back-fill running quietly on the panel worker: every panel when the monitor starts, and
// a panel whose pushed connection comes back after a loss. The monitor and the back-fill stop
// when the pages go.
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

    // Starts the station's live monitor as its network settings say (in the field: the port
    // most panels push to, on every address). Once listening, every usable panel is queued for a
    // back-fill.
    bool startMonitor(QString* error = nullptr);

    LiveMonitor& monitor();
    // Null once the pages are closing, or while the monitor does not run.
    RecordBackfill* backfill() const;
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
    bool m_closing = false;
    MonitorPage* m_monitorPage = nullptr;
    AccessRecordsPage* m_accessPage = nullptr;
    RecordRetrievalBox* m_retrieval = nullptr;
};
