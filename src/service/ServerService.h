#pragma once

#include "ServiceOperator.h"
#include "ServiceOptions.h"
#include "operations/schedule/ScheduleRunner.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <memory>

class Clock;
class InstanceLock;
class Station;
class WorkerRunStarter;

// The running service: the scheduler lock of the data folder, the station opened from the
// folder's settings, its worker, live monitor with back-fill and status listener, and the
// schedule runner ticked each second. Logs what happens, one line per event.
class ServerService : public QObject, public ScheduleRunner::Starter
{
    Q_OBJECT

public:
    explicit ServerService(const ServiceOptions& options, QObject* parent = nullptr);
    ~ServerService() override;

    // Starts everything; false (after logging why) when the service must not or cannot run.
    bool start();
    // The runner first, so no run starts while the station stops; then the station, which
    // stores whatever arrived and lets a run under way end.
    void stop();

    // Starts a run on the worker and logs its start and end.
    bool start(ScheduledRun run, std::function<void()> finished) override;

private:
    void tick();
    // Takes daily settings another program (kx410ctl) wrote into the settings file.
    void followSettingsFile();
    void connectLogs();

    ServiceOptions m_options;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<InstanceLock> m_schedulerLock;
    ServiceOperator m_operator;
    std::unique_ptr<Station> m_station;
    std::unique_ptr<WorkerRunStarter> m_starter;
    std::unique_ptr<ScheduleRunner> m_runner;
    QTimer m_tick;
    QString m_configFile;
    QDateTime m_configStamp;
};
