#include "ServerService.h"

#include "ServiceLog.h"
#include "ServiceStartupUi.h"
#include "operations/live/LiveMonitor.h"
#include "operations/live/StatusListener.h"
#include "operations/records/RecordBackfill.h"
#include "operations/schedule/WorkerRunStarter.h"
#include "operations/station/Station.h"
#include "store/Clock.h"
#include "store/ConfigFile.h"
#include "store/DataFolder.h"
#include "store/InstanceLock.h"
#include "store/StartupSequence.h"

#include <QFileInfo>
#include <QHostAddress>

using namespace Qt::StringLiterals;

namespace {
QString runName(ScheduledRun run)
{
    switch (run) {
    case ScheduledRun::DailySend:
        return u"daily send"_s;
    case ScheduledRun::DailyRetrieval:
        return u"daily retrieval"_s;
    case ScheduledRun::PeriodicBackup:
        return u"periodic backup"_s;
    case ScheduledRun::ApprovalReset:
        return u"daily approval reset"_s;
    }
    return u"run"_s;
}
} // namespace

ServerService::ServerService(const ServiceOptions& options, QObject* parent)
    : QObject(parent)
    , m_options(options)
{
    if (m_options.startAt.isValid())
        m_clock = std::make_unique<OffsetClock>(m_options.startAt);
    else
        m_clock = std::make_unique<SystemClock>();
}

ServerService::~ServerService()
{
    stop();
}

bool ServerService::start()
{
    const DataFolder folder(m_options.dataDir);
    const ConfigFile::ReadResult read = ConfigFile::read(folder.configFile());
    if (!read.settings.isSetUp()) {
        ServiceLog::line(u"the data folder "_s + folder.root()
                         + u" is not set up; set it up as a server with kx410ctl setup --server"_s);
        return false;
    }
    if (!read.settings.isServer()) {
        ServiceLog::line(u"the data folder "_s + folder.root()
                         + u" belongs to a client station; kx410d runs only a server station"_s);
        return false;
    }
    // Before the database is touched: one program runs a folder's daily schedule.
    m_schedulerLock = std::make_unique<InstanceLock>(folder.schedulerLockFile());
    if (!m_schedulerLock->tryLock()) {
        ServiceLog::line(u"another kx410d or a station window already runs the daily schedule of "_s + folder.root()
                         + u"; not started"_s);
        return false;
    }

    StartupOptions startup;
    startup.dataDir = m_options.dataDir;
    startup.databaseOverride = m_options.database;
    // The windows and kx410ctl may work on the same folder meanwhile.
    startup.singleInstance = false;
    ServiceStartupUi ui;
    const StartupResult started = StartupSequence(ui, startup).run();
    if (!started.ok)
        return false;

    m_station = std::make_unique<Station>(started, *m_clock);
    Station::Network& network = m_station->network();
    if (!m_options.broadcast.isEmpty())
        network.udp.broadcastAddress = m_options.broadcast;
    if (m_options.statusPort)
        network.udp.statusLocalPort = *m_options.statusPort;
    if (!m_options.listen.isEmpty())
        network.live.listenAddress = QHostAddress(m_options.listen);
    if (m_options.livePort) {
        network.live.tcpPort = *m_options.livePort;
        network.livePortFromPanels = false;
    }
    QString error;
    if (!m_station->load(&error))
        ServiceLog::line(error);
    if (!m_station->startWorker(&error)) {
        ServiceLog::line(u"cannot start the panel worker: "_s + error);
        return false;
    }
    // Like the window: the schedule runs even when the panels cannot be watched.
    if (m_station->startLive(&error))
        ServiceLog::line(u"live monitor listening on TCP %1"_s.arg(m_station->live().tcpPort()));
    else
        ServiceLog::line(u"live monitor not started: "_s + error);
    if (m_station->statusListener().start(&error))
        ServiceLog::line(u"status listener on UDP %1"_s.arg(m_station->statusListener().localPort()));
    else
        ServiceLog::line(u"status listener not started: "_s + error);
    connectLogs();

    WorkerRunStarter::Setup setup;
    setup.settings = m_station->settings();
    setup.backupFolder = m_station->folder().backupFolder();
    setup.eraseAfterRetrieval = m_options.eraseAfterRetrieval;
    setup.walk = { m_options.parallel, m_options.giveUpAfter };
    setup.sendChanged = m_options.sendChanged;
    setup.udp = network.udp;
    setup.clock = m_clock.get();
    m_starter = std::make_unique<WorkerRunStarter>(m_station->worker(), m_operator, m_station->session(),
                                                   m_station->roster(), setup);
    m_runner = std::make_unique<ScheduleRunner>(*m_clock, *this, &m_station->db());
    m_runner->setSchedule(DailySchedule::from(m_station->settings()));
    m_configFile = m_station->folder().configFile();
    m_configStamp = QFileInfo(m_configFile).lastModified();
    connect(&m_tick, &QTimer::timeout, this, &ServerService::tick);
    m_tick.start(1000);
    ServiceLog::line(u"started on "_s + m_station->folder().root() + u" at "_s
                     + m_clock->now().toString(u"yyyy-MM-dd HH:mm:ss"_s));
    return true;
}

void ServerService::stop()
{
    m_tick.stop();
    m_runner.reset();
    if (m_station) {
        m_station->stop();
        ServiceLog::line(u"stopped"_s);
    }
    m_starter.reset();
    m_station.reset();
    if (m_schedulerLock)
        m_schedulerLock->unlock();
}

bool ServerService::start(ScheduledRun run, std::function<void()> finished)
{
    const QString name = runName(run);
    const bool started = m_starter->start(run, [name, finished = std::move(finished)] {
        ServiceLog::line(name + u" ended"_s);
        if (finished)
            finished();
    });
    if (started)
        ServiceLog::line(name + u" started"_s);
    return started;
}

void ServerService::tick()
{
    followSettingsFile();
    m_runner->tick();
}

void ServerService::followSettingsFile()
{
    // A look at the file's date each tick is cheap.
    const QDateTime stamp = QFileInfo(m_configFile).lastModified();
    if (stamp == m_configStamp)
        return;
    m_configStamp = stamp;
    const ConfigFile::ReadResult read = ConfigFile::read(m_configFile);
    if (read.status != ConfigFile::Status::Ok)
        return;
    const DailySchedule daily = DailySchedule::from(read.settings);
    if (daily == m_runner->schedule())
        return;
    m_runner->setSchedule(daily);
    ServiceLog::line(u"daily settings changed"_s);
}

void ServerService::connectLogs()
{
    LiveMonitor& monitor = m_station->live();
    connect(&monitor, &LiveMonitor::passagesStored, this,
            [](const QList<RecordRow>& rows) { ServiceLog::line(u"live: %1 passages stored"_s.arg(rows.size())); });
    connect(&monitor, &LiveMonitor::storeFailed, this,
            [](const QString& why) { ServiceLog::line(u"live: storing failed, will retry: "_s + why); });
    if (RecordBackfill* backfill = m_station->backfill()) {
        connect(backfill, &RecordBackfill::panelFetched, this, [](qint32 panel, int downloaded, int added) {
            ServiceLog::line(u"backfill panel=%1 downloaded=%2 added=%3"_s.arg(panel).arg(downloaded).arg(added));
        });
        connect(backfill, &RecordBackfill::panelFailed, this, [](qint32 panel, const QString& reason) {
            ServiceLog::line(u"backfill panel=%1 failed: %2"_s.arg(panel).arg(reason));
        });
    }
}
