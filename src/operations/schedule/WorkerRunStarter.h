#pragma once

#include "operations/live/UdpSettings.h"
#include "operations/panels/ParallelWalk.h"
#include "operations/schedule/ScheduleRunner.h"
#include "store/Clock.h"
#include "store/StationSettings.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <functional>

class Operator;
class OperatorSession;
class PanelRoster;
class PanelWorker;

// Starts the scheduled runs straight on a panel worker, for an owner without windows (the service,
// tests): nobody is asked anything, everything is told to the operator given, and `finished` is
// called on the thread this object lives on.
class WorkerRunStarter : public QObject, public ScheduleRunner::Starter
{
    Q_OBJECT

public:
    struct Setup
    {
        StationSettings settings;
        QString backupFolder;
        // Erase each panel after its records are stored by the daily retrieval.
        bool eraseAfterRetrieval = false;
        // How the daily send and retrieval walk the panels.
        ParallelWalk::Options walk;
        // The daily send takes each panel only what changed since its last send.
        bool sendChanged = false;
        UdpSettings udp;
        const Clock* clock = &Clock::system();
    };

    WorkerRunStarter(PanelWorker& worker, Operator& op, OperatorSession& session, PanelRoster& roster,
                     const Setup& setup, QObject* parent = nullptr);

    bool start(ScheduledRun run, std::function<void()> finished) override;

private:
    PanelWorker& m_worker;
    Operator& m_op;
    OperatorSession& m_session;
    PanelRoster& m_roster;
    Setup m_setup;
    std::function<void()> m_finished;
};
