#pragma once

#include "support/StationFixture.h"
#include "ui/main/MainPages.h"
#include "ui/main/PageServices.h"

#include <QLabel>
#include <QProgressBar>
#include <QString>
#include <QTabWidget>
#include <QTest>
#include <QWidget>
#include <memory>

class AccessRecordsPage;
class LiveMonitor;
class MonitorPage;
class PanelWorkerBridge;
class WindowOperator;
class frmMain;

// The station's real main window with its pages, opened over a StationFixture. Build the panels
// and users first, then open(). With `listening` the live monitor listens on a free loopback
// port when the window starts it, and panels added through addPanel() push their live frames
// to it.
class StationWindow
{
public:
    explicit StationWindow(bool listening = false);
    ~StationWindow();

    StationFixture& sim() { return m_sim; }
    Database& db() { return m_sim.db(); }

    // Opens the window and its pages (which start the worker and, when listening, the monitor);
    // false with the reason in error().
    bool open();
    QString error() const { return m_error; }
    // Closes the window the way the station does: its pages go first, stopping the monitor and
    // the worker.
    void close();

    QWidget& window() const;
    frmMain& mainWindow() const { return *m_window; }
    MainPages& pages() const { return *m_pages; }
    WindowOperator& op() const;
    PanelWorkerBridge& bridge() const;
    MonitorPage& monitorPage() const;
    AccessRecordsPage& accessPage() const;
    LiveMonitor& monitor() { return m_sim.station().live(); }
    QProgressBar* progressBar() const;
    QLabel* statusLine() const;
    QString pictureFolder();

    // A simulated panel whose live frames go to the station's monitor.
    SimPanel* addPanel(int number) { return m_sim.addPushingPanel(number); }
    int storedPassages() { return m_sim.storedPassages(); }

    template <typename T> T* find(const QString& name) const
    {
        T* child = window().findChild<T*>(name);
        if (!child)
            qWarning("no control named %s", qPrintable(name));
        return child;
    }
    // Clicks the named button; false when it is missing or disabled.
    bool click(const QString& name) const;
    // Waits until the running panel operation is over.
    bool waitIdle() const;

private:
    StationFixture m_sim;
    std::unique_ptr<frmMain> m_window;
    MainPages* m_pages = nullptr;
    QString m_error;
};
