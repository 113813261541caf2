#include "operations/panels/PanelWorker.h"

#include "store/Database.h"

#include <QMetaObject>

// What lives on the worker thread: made, used and destroyed there.
class PanelWorker::Resources
{
public:
    PanelLink link;
    Database db;
};

PanelWorker::PanelWorker(QObject* parent)
    : QObject(parent)
{
    m_thread.setObjectName(QStringLiteral("PanelWorker"));
}

PanelWorker::~PanelWorker()
{
    stop();
}

bool PanelWorker::start(const Database& mainDb, const PanelLink::Settings& linkSettings, QString* error)
{
    if (isRunning())
        return true;
    m_thread.start();
    m_context = new QObject;
    m_context->moveToThread(&m_thread);
    bool opened = false;
    QString reason;
    // The connection must be made on the thread that will use it.
    QMetaObject::invokeMethod(
        m_context,
        [&] {
            auto resources = std::make_unique<Resources>();
            resources->link.setSettings(linkSettings);
            resources->db = mainDb.cloneForThread(QStringLiteral("worker"), &reason);
            opened = resources->db.isOpen();
            if (opened)
                m_resources = std::move(resources);
        },
        Qt::BlockingQueuedConnection);
    if (!opened) {
        if (error)
            *error = reason;
        stop();
        return false;
    }
    return true;
}

void PanelWorker::stop()
{
    if (!m_thread.isRunning())
        return;
    if (m_context) {
        // Queued behind a running job, so it waits for that job to end.
        QMetaObject::invokeMethod(
            m_context, [this] { m_resources.reset(); }, Qt::BlockingQueuedConnection);
        QObject* context = m_context;
        m_context = nullptr;
        QMetaObject::invokeMethod(
            context, [context] { delete context; }, Qt::BlockingQueuedConnection);
    }
    m_thread.quit();
    m_thread.wait();
}

bool PanelWorker::isRunning() const
{
    return m_thread.isRunning() && m_context != nullptr;
}

bool PanelWorker::submit(Job job)
{
    if (!isRunning() || !job)
        return false;
    bool expected = false;
    if (!m_busy.compare_exchange_strong(expected, true))
        return false;
    Q_EMIT busyChanged(true);
    QMetaObject::invokeMethod(
        m_context,
        [this, job = std::move(job)] {
            Q_EMIT started();
            if (m_resources)
                job(m_resources->link, m_resources->db);
            m_busy = false;
            Q_EMIT finished();
            Q_EMIT busyChanged(false);
        },
        Qt::QueuedConnection);
    return true;
}
