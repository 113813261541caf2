#include "ui/main/PanelWorkerBridge.h"

#include "operations/station/Station.h"
#include "ui/common/MessageBox.h"
#include "ui/main/WindowOperator.h"

#include <QAbstractButton>
#include <QApplication>
#include <QWidget>
#include <utility>

using namespace Qt::StringLiterals;

PanelWorkerBridge::PanelWorkerBridge(const PageServices& services, QWidget* window, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_jobs(services.station->jobs())
    , m_window(window)
{
    connect(&m_jobs, &PanelJobs::busyChanged, this, &PanelWorkerBridge::showBusy);
    connect(&m_jobs, &PanelJobs::jobFinished, this, &PanelWorkerBridge::jobFinished);
}

PanelWorkerBridge::~PanelWorkerBridge()
{
    stop();
}

bool PanelWorkerBridge::start(QString* error)
{
    return m_services.station->startWorker(error);
}

void PanelWorkerBridge::stop()
{
    m_services.station->stopWorker();
    // A busy state given up without a signal reaching us (we were disconnected) ends here too.
    if (m_cursorShown)
        showBusy(false);
}

bool PanelWorkerBridge::busy() const
{
    return m_jobs.busy();
}

bool PanelWorkerBridge::backgroundBusy() const
{
    return m_jobs.backgroundBusy();
}

bool PanelWorkerBridge::run(Job job, std::function<void()> done, Operator* op)
{
    switch (m_jobs.check()) {
    case PanelJobs::Start::Busy:
        MessageBox::warning(m_window, Message(u"Devam eden bir panel işlemi var, lütfen bekleyiniz!"_s));
        return false;
    case PanelJobs::Start::NotRunning:
        return false;
    case PanelJobs::Start::Started:
        break;
    }
    if (op == nullptr)
        op = m_services.op;
    if (m_services.op)
        m_services.op->clearCancel();
    return m_jobs.run(m_services.station->workerJob(std::move(job), *op), std::move(done)) == PanelJobs::Start::Started;
}

bool PanelWorkerBridge::runQuiet(PanelWorker::Job job)
{
    return m_jobs.runQuiet(std::move(job));
}

void PanelWorkerBridge::guard(QWidget* widget)
{
    m_guarded.append(widget);
    if (m_jobs.busy())
        widget->setEnabled(false);
}

void PanelWorkerBridge::runOnClick(QAbstractButton* button, Job job)
{
    guard(button);
    connect(button, &QAbstractButton::clicked, this, [this, job = std::move(job)] { run(job); });
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
