#include "ScriptedPanel.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <memory>

ScriptedPanel::ScriptedPanel(Script script)
    : m_script(std::move(script))
{
    m_thread = std::thread([this] { run(); });
    while (m_port == 0)
        QThread::msleep(1);
}

ScriptedPanel::~ScriptedPanel()
{
    m_stop = true;
    m_thread.join();
}

QList<QByteArray> ScriptedPanel::requests() const
{
    QMutexLocker lock(&m_mutex);
    return m_requests;
}

void ScriptedPanel::run()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    m_port = server.serverPort();
    std::unique_ptr<QTcpSocket> client;
    QByteArray pending;
    while (!m_stop) {
        if (server.waitForNewConnection(client ? 0 : 20)) {
            // A new link replaces the old one, as a panel serves one station at a time.
            client.reset(server.nextPendingConnection());
            client->setParent(nullptr);
            pending.clear();
            ++m_connections;
        }
        if (!client)
            continue;
        client->waitForReadyRead(20);
        pending += client->readAll();
        qsizetype end;
        while ((end = pending.indexOf('\r')) >= 0) {
            const QByteArray request = pending.left(end);
            pending.remove(0, end + 1);
            {
                QMutexLocker lock(&m_mutex);
                m_requests.append(request);
            }
            for (const Write& write : m_script(request)) {
                if (write.delayMs > 0)
                    QThread::msleep(static_cast<unsigned long>(write.delayMs));
                client->write(write.bytes);
                client->waitForBytesWritten(1000);
            }
        }
        if (client->state() != QAbstractSocket::ConnectedState)
            client.reset();
    }
}
