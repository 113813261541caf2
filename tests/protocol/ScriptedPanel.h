#pragma once

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <atomic>
#include <functional>
#include <thread>

// A minimal panel on 127.0.0.1 for link tests: it reads requests (ended by a carriage return) and
// answers what the script says, after the given pauses. Runs on its own thread with blocking calls,
// so the link under test may block the test's thread.
class ScriptedPanel
{
public:
    struct Write
    {
        int delayMs = 0;
        QByteArray bytes;
    };
    using Script = std::function<QList<Write>(const QByteArray& request)>;

    explicit ScriptedPanel(Script script);
    ~ScriptedPanel();

    quint16 port() const { return m_port; }
    int connections() const { return m_connections; }
    QList<QByteArray> requests() const;

private:
    void run();

    Script m_script;
    std::thread m_thread;
    std::atomic<bool> m_stop{ false };
    std::atomic<int> m_connections{ 0 };
    std::atomic<quint16> m_port{ 0 };
    mutable QMutex m_mutex;
    QList<QByteArray> m_requests;
};
