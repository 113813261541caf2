#pragma once

#include "protocol/PanelLink.h"

#include <QObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

class Database;

// The one thread on which panel operations run, with its own panel link and its own database
// connection. One job at a time: a second submit while one runs is refused, so operations never
// overlap (the scheduler's daily runs go through the same worker).
class PanelWorker : public QObject
{
    Q_OBJECT

public:
    using Job = std::function<void(PanelLink& link, Database& db)>;

    explicit PanelWorker(QObject* parent = nullptr);
    ~PanelWorker() override;

    // Starts the thread and opens its connection to the same database as mainDb.
    bool start(const Database& mainDb, const PanelLink::Settings& linkSettings = PanelLink::Settings(),
               QString* error = nullptr);
    // Waits for a running job to end, then closes the link and the connection.
    void stop();
    bool isRunning() const;

    // Queues the job on the worker thread; false when one is running already or not started.
    bool submit(Job job);
    bool busy() const { return m_busy.load(); }

Q_SIGNALS:
    void started();
    void finished();
    void busyChanged(bool busy);

private:
    class Resources;

    QThread m_thread;
    QObject* m_context = nullptr;
    std::unique_ptr<Resources> m_resources;
    std::atomic<bool> m_busy{ false };
};
