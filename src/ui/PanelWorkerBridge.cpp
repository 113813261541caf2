#include "ui/PanelWorkerBridge.h"

#include "operations/PanelRoster.h"
#include "operations/PanelWorker.h"
#include "store/OperatorSession.h"
#include "store/StationSettings.h"
#include "ui/MessageBox.h"
#include "ui/WindowOperator.h"

#include <QApplication>
#include <QWidget>

using namespace Qt::StringLiterals;

PanelWorkerBridge::PanelWorkerBridge(const PageServices& services, PanelRoster& roster, QWidget* window,
                                     QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_roster(roster)
    , m_window(window)
    , m_worker(new PanelWorker(this))
{
    connect(m_worker, &PanelWorker::finished, this, [this] {
        std::function<void()> done = std::move(m_done);
        m_done = {};
        m_running = false;
        showBusy(false);
        if (done)
            done();
        Q_EMIT jobFinished();
    });
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
    if (m_running) {
        m_running = false;
        showBusy(false);
    }
}

bool PanelWorkerBridge::busy() const
{
    return m_running;
}

bool PanelWorkerBridge::run(Job job, std::function<void()> done, Operator* op)
{
    if (m_running || m_worker->busy()) {
        MessageBox::warning(m_window, Message(u"Devam eden bir panel işlemi var, lütfen bekleyiniz!"_s));
        return false;
    }
    if (op == nullptr)
        op = m_services.op;
    if (m_services.op)
        m_services.op->clearCancel();
    const StationSettings settings = m_services.settings;
    OperatorSession* session = m_services.session;
    PanelRoster* roster = &m_roster;
    const UdpSettings udp = m_services.udp;
    const auto clock = m_services.clock;
    const bool submitted = m_worker->submit([=](PanelLink& link, Database& db) {
        OperationContext context{ db, link, *op, *session, settings, *roster, clock, udp };
        job(context);
    });
    if (!submitted)
        return false;
    m_running = true;
    m_done = std::move(done);
    showBusy(true);
    return true;
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
