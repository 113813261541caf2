#include "operations/panels/PanelJobs.h"

#include <utility>

PanelJobs::PanelJobs(PanelWorker& worker, QObject* parent)
    : QObject(parent)
    , m_worker(worker)
{
    connect(&m_worker, &PanelWorker::finished, this, &PanelJobs::jobEnded);
}

PanelJobs::Start PanelJobs::check() const
{
    // A background job may have ended on the worker without its end having reached us yet: the
    // flag is what counts, so the operator's job never races it.
    if (m_running || (!m_background && m_worker.busy()))
        return Start::Busy;
    if (!m_worker.isRunning())
        return Start::NotRunning;
    return Start::Started;
}

PanelJobs::Start PanelJobs::run(Job job, std::function<void()> done)
{
    if (const Start now = check(); now != Start::Started)
        return now;
    if (m_background)
        m_waiting = std::move(job);
    else if (!m_worker.submit(std::move(job)))
        return Start::NotRunning;
    m_running = true;
    m_done = std::move(done);
    Q_EMIT busyChanged(true);
    return Start::Started;
}

bool PanelJobs::runQuiet(Job job)
{
    if (m_running || m_background || !job)
        return false;
    if (!m_worker.submit(std::move(job)))
        return false;
    m_background = true;
    return true;
}

void PanelJobs::stop()
{
    m_worker.stop();
    m_background = false;
    m_waiting = {};
    if (m_running) {
        m_running = false;
        m_done = {};
        Q_EMIT busyChanged(false);
    }
}

void PanelJobs::jobEnded()
{
    if (m_background) {
        m_background = false;
        if (!m_waiting)
            return;
        Job waiting = std::exchange(m_waiting, Job());
        if (m_worker.submit(std::move(waiting)))
            return;
        // The worker stopped meanwhile: the waiting job ends without having run.
    } else if (!m_running) {
        return; // the end of a job that stop() already gave up on
    }
    std::function<void()> done = std::exchange(m_done, {});
    m_running = false;
    Q_EMIT busyChanged(false);
    if (done)
        done();
    Q_EMIT jobFinished();
}
