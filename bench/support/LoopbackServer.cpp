#include "LoopbackServer.h"

#include <QMetaObject>
#include <QTcpServer>
#include <QTcpSocket>

LoopbackServer::LoopbackServer(const QByteArray& reply)
    : m_reply(reply)
{ }

LoopbackServer::~LoopbackServer()
{
    if (m_context) {
        QMetaObject::invokeMethod(
            m_context, [this] { qDeleteAll(m_context->children()); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
        delete m_context;
    }
}

quint16 LoopbackServer::start()
{
    m_context = new QObject;
    m_context->moveToThread(&m_thread);
    m_thread.start();
    quint16 port = 0;
    QMetaObject::invokeMethod(
        m_context,
        [this, &port] {
            m_server = new QTcpServer(m_context);
            if (!m_server->listen(QHostAddress::LocalHost, 0))
                return;
            port = m_server->serverPort();
            QObject::connect(m_server, &QTcpServer::newConnection, m_context, [this] {
                while (QTcpSocket* socket = m_server->nextPendingConnection()) {
                    socket->setParent(m_context);
                    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
                    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                        const QByteArray data = socket->readAll();
                        if (m_reply.isEmpty()) {
                            socket->write(data);
                            return;
                        }
                        for (qsizetype i = data.count('\r'); i > 0; --i)
                            socket->write(m_reply);
                    });
                }
            });
        },
        Qt::BlockingQueuedConnection);
    return port;
}
