#pragma once

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelWorker.h"
#include "ui/main/PageServices.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <functional>

class Operator;
class PanelRoster;
class QWidget;

// The pages' way to the worker thread. A page gathers its input and hands over a job; the job
// runs on the worker with an OperationContext built there (the worker's own link and database),
// while the window shows it is busy: the wait cursor, and every registered control disabled.
// Only one job runs at a time; a second one is refused with a message.
//
// Background jobs (the record back-fill) go through runQuiet(): nothing in the window changes
// and a busy worker only answers false, the caller tries again later. An operator's job that
// comes while a background job runs waits for that job to end (the window shows busy meanwhile)
// instead of being refused, since the background job is short and the person did nothing wrong.
class PanelWorkerBridge : public QObject
{
    Q_OBJECT

public:
    using Job = std::function<void(OperationContext&)>;

    // window: over which the refusal of a second operation is shown.
    PanelWorkerBridge(const PageServices& services, PanelRoster& roster, QWidget* window, QObject* parent = nullptr);
    ~PanelWorkerBridge() override;

    bool start(QString* error = nullptr);
    void stop();

    // Runs job on the worker, then `done` on the window thread. With `op` the job talks to the
    // person through it instead of the window's operator. False (and the person told) when an
    // operation is running already.
    bool run(Job job, std::function<void()> done = {}, Operator* op = nullptr);
    // True while an operator's job runs or waits for a background job to end.
    bool busy() const;

    // Runs a background job on the worker without showing anything; false when the worker is
    // busy, an operator's job waits, or the worker is not running.
    bool runQuiet(PanelWorker::Job job);
    bool backgroundBusy() const;

    // Controls that must not start anything while a job runs.
    void guard(QWidget* widget);

Q_SIGNALS:
    void busyChanged(bool busy);
    void jobFinished();

private:
    bool submitOperatorJob(Job job, Operator* op);
    void jobEnded();
    void showBusy(bool busy);

    PageServices m_services;
    PanelRoster& m_roster;
    QPointer<QWidget> m_window;
    PanelWorker* m_worker = nullptr;
    QList<QPointer<QWidget>> m_guarded;
    std::function<void()> m_done;
    // An operator's job held back while a background job runs, with the operator it talks to.
    Job m_waiting;
    Operator* m_waitingOp = nullptr;
    bool m_running = false;
    bool m_background = false;
    bool m_cursorShown = false;
};
