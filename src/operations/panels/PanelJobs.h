#pragma once

#include "operations/panels/PanelWorker.h"

#include <QObject>
#include <functional>

// Who gets the panel worker, and when. An operator's job is refused while another runs; a
// background job (the record back-fill) runs only when nothing else does, and an operator's job
// that comes meanwhile waits for it instead of being refused, since the background job is short
// and the person did nothing wrong. Lives on the thread that owns the station.
class PanelJobs : public QObject
{
    Q_OBJECT

public:
    using Job = PanelWorker::Job;

    enum class Start
    {
        Started,
        Busy, // another operator's job runs
        NotRunning // the worker is not started (or stopped meanwhile)
    };

    explicit PanelJobs(PanelWorker& worker, QObject* parent = nullptr);

    // Whether an operator's job would start now (nothing is submitted).
    Start check() const;
    // Runs an operator's job, then `done` on this object's thread once it has ended.
    Start run(Job job, std::function<void()> done = {});
    // True while an operator's job runs or waits for a background job to end.
    bool busy() const { return m_running; }

    // Runs a background job; false when the worker is busy, an operator's job waits, or the
    // worker is not running.
    bool runQuiet(Job job);
    bool backgroundBusy() const { return m_background; }

    // Stops the worker (waiting for the job that runs) and forgets the jobs that wait.
    void stop();

Q_SIGNALS:
    // An operator's job began or ended (also when stop() gave it up).
    void busyChanged(bool busy);
    // An operator's job ended, after its `done`.
    void jobFinished();

private:
    void jobEnded();

    PanelWorker& m_worker;
    std::function<void()> m_done;
    // An operator's job held back while a background job runs.
    Job m_waiting;
    bool m_running = false;
    bool m_background = false;
};
