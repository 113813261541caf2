#pragma once

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelJobs.h"
#include "ui/main/PageServices.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <functional>

class QAbstractButton;

class Operator;
class QWidget;

// The pages' way to the station's panel worker. A page gathers its input and hands over a job;
// the job runs on the worker with an OperationContext built there (the worker's own link and
// database), while the window shows it is busy: the wait cursor, and every registered control
// disabled. Only one job runs at a time; a second one is refused with a message. Background
// jobs (the record back-fill) go through the station's PanelJobs and change nothing here.
class PanelWorkerBridge : public QObject
{
    Q_OBJECT

public:
    using Job = std::function<void(OperationContext&)>;

    // window: over which the refusal of a second operation is shown.
    PanelWorkerBridge(const PageServices& services, QWidget* window, QObject* parent = nullptr);
    ~PanelWorkerBridge() override;

    // Starts and stops the station's worker.
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
    // Guards the button and runs job on the worker whenever it is clicked.
    void runOnClick(QAbstractButton* button, Job job);

Q_SIGNALS:
    void busyChanged(bool busy);
    void jobFinished();

private:
    void showBusy(bool busy);

    PageServices m_services;
    PanelJobs& m_jobs;
    QPointer<QWidget> m_window;
    QList<QPointer<QWidget>> m_guarded;
    bool m_cursorShown = false;
};
