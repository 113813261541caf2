#pragma once

#include "operations/live/LiveMonitor.h"
#include "operations/live/LiveSettings.h"
#include "operations/live/UdpSettings.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelJobs.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelWorker.h"
#include "protocol/PanelLink.h"
#include "store/OperatorAccounts.h"
#include "store/OperatorSession.h"
#include "store/StartupSequence.h"

#include <functional>
#include <memory>

class Clock;
class Operator;
class RecordBackfill;
class StatusListener;

// The running station, the same for the window, the command line and the tests: the started
// data (settings, data folder, main database), the operator's session and accounts, the panel
// roster, the panel worker with its job rules, the live monitor with its record back-fill, the
// status listener, and the clock every part reads. Made and used on one thread (the window's,
// or the command line's main thread); the worker and the live monitor run on threads of their
// own, started on demand: nothing starts by merely making the station.
//
// Stopping goes back-fill, live monitor (whatever arrived is stored first), then worker (joined
// after the job it runs). Work driven by the clock (the daily transfers) joins as one more member
// here, started on demand like the others and stopped in stop() before the worker.
class Station
{
public:
    // How the station reaches the panels; set before the parts are started.
    struct Network
    {
        UdpSettings udp;
        PanelLink::Settings link;
        // Where the live monitor listens: every address; the status datagrams are left to the
        // status listener, which owns that port.
        LiveSettings live = windowLive();
        // The live TCP port is the one most panels are told to push to.
        bool livePortFromPanels = true;
        // Panels are back-filled when the live monitor starts and when a lost link comes back.
        bool backfill = true;
        int backfillRetryMs = 10000;

        static LiveSettings windowLive();
    };

    // start: what the start-up produced (its database open); clock: "now" for the whole station.
    Station(const StartupResult& start, const Clock& clock);
    ~Station();
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    // Reads the panel list and the operator accounts; false with what failed.
    bool load(QString* error = nullptr);

    const Clock& clock() const { return m_clock; }
    Database& db() const { return *m_start.database; }
    const std::shared_ptr<Database>& database() const { return m_start.database; }
    // Changed only by the window thread (the language); jobs take a copy when they start.
    StationSettings& settings() { return m_start.settings; }
    const StationSettings& settings() const { return m_start.settings; }
    const DataFolder& folder() const { return m_start.folder; }
    QString title() const { return m_start.title; }
    QString databaseLocation() const { return m_start.databaseLocation; }
    OperatorSession& session() { return m_session; }
    OperatorAccounts& accounts() { return m_accounts; }
    PanelRoster& roster() { return m_roster; }
    Network& network() { return m_network; }
    const Network& network() const { return m_network; }

    // An operation's context on the calling thread, with that thread's database and link.
    OperationContext operationContext(Database& db, PanelLink& link, Operator& op);
    // A job for the worker that runs `job` with a context made there (the worker's own link and
    // database); the settings are those in force now.
    PanelJobs::Job workerJob(std::function<void(OperationContext&)> job, Operator& op);

    // The panel worker: its own thread, link and database connection.
    bool startWorker(QString* error = nullptr);
    void stopWorker();
    PanelJobs& jobs() { return m_jobs; }
    PanelWorker& worker() { return m_worker; }

    // Starts listening for the panels' pushed frames (restarting when listening already), then
    // queues every usable panel for a back-fill; false with the reason when it cannot listen.
    bool startLive(QString* error = nullptr);
    // Stops the back-fill, then the monitor, storing what has arrived.
    void stopLive();
    LiveMonitor& live() { return m_live; }
    // Null when the monitor is not running or back-fill is off.
    RecordBackfill* backfill() const { return m_backfill.get(); }

    // The status listener (made on first use with the network's UDP settings; bound when started).
    StatusListener& statusListener();

    // Stops everything that runs, in the order above.
    void stop();

private:
    StartupResult m_start;
    const Clock& m_clock;
    Network m_network;
    OperatorSession m_session;
    OperatorAccounts m_accounts;
    PanelRoster m_roster;
    PanelWorker m_worker;
    PanelJobs m_jobs;
    LiveMonitor m_live;
    std::unique_ptr<RecordBackfill> m_backfill;
    std::unique_ptr<StatusListener> m_statusListener;
};
