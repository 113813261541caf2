#include "operations/station/Station.h"

#include "operations/live/StatusListener.h"
#include "operations/panels/PanelsPushPort.h"
#include "operations/records/RecordBackfill.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

LiveSettings Station::Network::windowLive()
{
    LiveSettings live;
    live.listenUdp = false;
    return live;
}

Station::Station(const StartupResult& start, const Clock& clock)
    : m_start(start)
    , m_clock(clock)
    , m_session(clock)
    , m_jobs(m_worker)
    , m_live(clock)
{
    m_roster.setStationSettings(m_start.settings);
}

Station::~Station()
{
    stop();
}

bool Station::load(QString* error)
{
    QString why;
    bool ok = true;
    if (!m_start.database || !m_roster.load(*m_start.database, &why)) {
        ok = false;
        if (error)
            *error = u"panel list: "_s + why;
    }
    if (m_start.database && !m_accounts.load(*m_start.database, &why)) {
        if (error)
            *error += (ok ? QString() : u"\n"_s) + u"operator accounts: "_s + why;
        ok = false;
    }
    return ok;
}

OperationContext Station::operationContext(Database& db, PanelLink& link, Operator& op)
{
    return OperationContext{ db, link, op, m_session, m_start.settings, m_roster, m_clock, m_network.udp };
}

PanelJobs::Job Station::workerJob(std::function<void(OperationContext&)> job, Operator& op)
{
    // Copies: the window may change its settings while the job runs on the worker.
    const StationSettings settings = m_start.settings;
    const UdpSettings udp = m_network.udp;
    OperatorSession* session = &m_session;
    PanelRoster* roster = &m_roster;
    const Clock* clock = &m_clock;
    Operator* person = &op;
    return [=, job = std::move(job)](PanelLink& link, Database& db) {
        OperationContext context{ db, link, *person, *session, settings, *roster, *clock, udp };
        job(context);
    };
}

bool Station::startWorker(QString* error)
{
    return m_worker.start(db(), m_network.link, error);
}

void Station::stopWorker()
{
    m_jobs.stop();
}

bool Station::startLive(QString* error)
{
    stopLive();
    LiveSettings settings = m_network.live;
    if (m_network.livePortFromPanels) {
        settings.tcpPort = PanelsPushPort(db());
        if (settings.tcpPort == 0) {
            if (error)
                *error = u"no panel has a remote port"_s;
            return false;
        }
    }
    if (m_network.backfill) {
        // Watching before the monitor listens, so no lost link is missed.
        m_backfill = std::make_unique<RecordBackfill>(
            m_roster, m_clock, [this](RecordBackfill::Job job) { return m_jobs.runQuiet(std::move(job)); });
        m_backfill->setRetryIntervalMs(m_network.backfillRetryMs);
        m_backfill->watch(m_live);
    }
    if (!m_live.start(db(), settings, &m_roster, error)) {
        m_backfill.reset();
        return false;
    }
    // Whatever the panels stored while nobody listened is fetched now.
    if (m_backfill)
        m_backfill->requestAll();
    return true;
}

void Station::stopLive()
{
    // The back-fill first: it must not hand the worker a job once the monitor is gone. A job
    // already running only reports back through a guarded pointer.
    m_backfill.reset();
    m_live.stop();
}

StatusListener& Station::statusListener()
{
    if (!m_statusListener)
        m_statusListener = std::make_unique<StatusListener>(m_roster, m_network.udp);
    return *m_statusListener;
}

void Station::stop()
{
    stopLive();
    stopWorker();
    if (m_statusListener)
        m_statusListener->stop();
}
