#include "ui/main/PanelWorkerBridge.h"

#include "operations/panels/PanelRoster.h"
#include "store/OperatorSession.h"
#include "store/StationSettings.h"
#include "ui/common/MessageBox.h"
#include "ui/main/WindowOperator.h"

#include <QApplication>
#include <QWidget>
#include <utility>

using namespace Qt::StringLiterals;

PanelWorkerBridge::PanelWorkerBridge(const PageServices& services, PanelRoster& roster, QWidget* window,
                                     QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_roster(roster)
    , m_window(window)
    , m_worker(new PanelWorker(this))
{
    connect(m_worker, &PanelWorker::finished, this, &PanelWorkerBridge::jobEnded);
}

PanelWorkerBridge::~PanelWorkerBridge()
{
    stop();
}

bool PanelWorkerBridge::start(QString* error)
{
    return m_worker->start(*m_services.db, m_services.linkSettings, error);
}

void PanelWorkerBridge::stop()
{
    m_worker->stop();
    m_background = false;
    m_waiting = {};
    m_waitingOp = nullptr;
    if (m_running) {
        m_running = false;
        m_done = {};
        showBusy(false);
    }
}

bool PanelWorkerBridge::busy() const
{
    return m_running;
}

bool PanelWorkerBridge::backgroundBusy() const
{
    return m_background;
}

bool PanelWorkerBridge::run(Job job, std::function<void()> done, Operator* op)
{
    // A background job may have ended on the worker without its end having reached us yet: the
    // flag is what counts, so the operator's job never races it.
    if (m_running || (!m_background && m_worker->busy())) {
        MessageBox::warning(m_window, Message(u"Devam eden bir panel işlemi var, lütfen bekleyiniz!"_s));
        return false;
    }
    if (!m_worker->isRunning())
        return false;
    if (op == nullptr)
        op = m_services.op;
    if (m_services.op)
        m_services.op->clearCancel();
    if (m_background) {
        m_waiting = std::move(job);
        m_waitingOp = op;
    } else if (!submitOperatorJob(std::move(job), op)) {
        return false;
    }
    m_running = true;
    m_done = std::move(done);
    showBusy(true);
    return true;
}

bool PanelWorkerBridge::runQuiet(PanelWorker::Job job)
{
    if (m_running || m_background || !job)
        return false;
    if (!m_worker->submit(std::move(job)))
        return false;
    m_background = true;
    return true;
}

bool PanelWorkerBridge::submitOperatorJob(Job job, Operator* op)
{
    const StationSettings settings = m_services.settings;
    OperatorSession* session = m_services.session;
    PanelRoster* roster = &m_roster;
    const UdpSettings udp = m_services.udp;
    const auto clock = m_services.clock;
    return m_worker->submit([=](PanelLink& link, Database& db) {
        OperationContext context{ db, link, *op, *session, settings, *roster, clock, udp };
        job(context);
    });
}

void PanelWorkerBridge::jobEnded()
{
    if (m_background) {
        m_background = false;
        if (!m_waiting)
            return;
        Job waiting = std::move(m_waiting);
        m_waiting = {};
        Operator* op = std::exchange(m_waitingOp, nullptr);
        if (submitOperatorJob(std::move(waiting), op))
            return;
        // The worker stopped meanwhile: the waiting job ends without having run.
    } else if (!m_running) {
        return; // the end of a job that stop() already gave up on
    }
    std::function<void()> done = std::move(m_done);
    m_done = {};
    m_running = false;
    showBusy(false);
    if (done)
        done();
    Q_EMIT jobFinished();
}

void PanelWorkerBridge::guard(QWidget* widget)
{
    m_guarded.append(widget);
    if (m_running)
        widget->setEnabled(false);
}

void PanelWorkerBridge::showBusy(bool busy)
{
    for (const QPointer<QWidget>& widget : std::as_const(m_guarded)) {
        if (widget)
            widget->setEnabled(!busy);
    }
    if (busy && !m_cursorShown) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        m_cursorShown = true;
    } else if (!busy && m_cursorShown) {
        QApplication::restoreOverrideCursor();
        m_cursorShown = false;
    }
    Q_EMIT busyChanged(busy);
}
