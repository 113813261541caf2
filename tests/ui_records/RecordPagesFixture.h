#pragma once

#include "SimFixture.h"
#include "operations/live/LiveMonitor.h"
#include "ui/main/PageServices.h"

#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QWidget>

class AccessRecordsPage;
class MonitorPage;
class PanelTargetBox;
class PanelWorkerBridge;
class RecordRetrievalBox;
class WindowOperator;

// A stand-in for the main window with the record pages: the monitoring page and the access-record
// page following a live monitor on loopback, the offline record box with its opsPanelOptionR,
// PrBar and the status line, over SimFixture's fresh database and simulated panels. Simulated
// panels added through addPanel() push their live frames to the monitor.
class RecordPagesFixture
{
public:
    RecordPagesFixture();
    ~RecordPagesFixture();

    SimFixture& sim() { return m_sim; }
    Database& db() { return m_sim.db(); }
    QWidget& window() { return m_window; }
    LiveMonitor& monitor() { return m_monitor; }
    MonitorPage& monitorPage() const { return *m_monitorPage; }
    AccessRecordsPage& accessPage() const { return *m_accessPage; }
    PanelWorkerBridge& bridge() const { return *m_bridge; }
    QLabel* statusLine() const { return m_status; }
    const PageServices& services() const { return m_services; }
    QProgressBar* progressBar() const { return m_progress; }

    // Makes the pages and starts the monitor; false with the reason in error().
    bool open();
    QString error() const { return m_error; }
    SimPanel* addPanel(int number);

    template <typename T> T* find(const QString& name) const
    {
        T* child = m_window.findChild<T*>(name);
        if (!child)
            qWarning("no control named %s", qPrintable(name));
        return child;
    }
    bool click(const QString& name) const;
    bool waitIdle() const;
    int storedPassages();

private:
    SimFixture m_sim;
    LiveMonitor m_monitor;
    QWidget m_window;
    QProgressBar* m_progress = nullptr;
    QLabel* m_status = nullptr;
    WindowOperator* m_op = nullptr;
    PanelWorkerBridge* m_bridge = nullptr;
    MonitorPage* m_monitorPage = nullptr;
    AccessRecordsPage* m_accessPage = nullptr;
    PanelTargetBox* m_recordTarget = nullptr;
    RecordRetrievalBox* m_retrieval = nullptr;
    PageServices m_services;
    QString m_error;
};
