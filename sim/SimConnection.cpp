#include "SimConnection.h"

#include <QTcpSocket>

SimConnection::SimConnection(QTcpSocket* socket, SimPanel* panel, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
    , m_panel(panel)
{
    m_socket->setParent(this);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_timer.setSingleShot(true);
    // Delays are promised as minimums: a coarse timer may fire a little early.
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &SimConnection::onTimer);
    connect(m_socket, &QTcpSocket::readyRead, this, &SimConnection::onReadyRead);
    connect(m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
}

void SimConnection::close()
{
    m_queue.clear();
    m_timer.stop();
    m_socket->abort();
    deleteLater();
}

void SimConnection::onReadyRead()
{
    const QList<QByteArray> frames = m_cutter.feed(m_socket->readAll());
    if (!m_panel)
        return;
    for (const QByteArray& frame : frames) {
        SimPanel::Reply reply = m_panel->handleRequest(frame);
        if (reply.chunks.isEmpty() && !reply.drop)
            continue;
        // A station that floods the link, or does not read its answers, gets no more answers than the
        // panel can hold.
        if (m_queue.size() >= kMaxQueued || m_socket->bytesToWrite() > kMaxUnsentBytes)
            continue;
        m_queue.push_back(std::move(reply));
    }
    pump();
}

void SimConnection::pump()
{
    while (!m_waiting && m_trickle.isEmpty() && !m_queue.empty()) {
        SimPanel::Reply& reply = m_queue.front();
        if (reply.drop) {
            close();
            return;
        }
        if (reply.delayMs > 0) {
            m_waiting = true;
            m_timer.start(reply.delayMs);
            reply.delayMs = 0;
            return;
        }
        if (reply.trickleMs > 0) {
            m_trickle = reply.chunks.join();
            m_trickleMs = reply.trickleMs;
            m_queue.pop_front();
            m_timer.start(m_trickleMs);
            return;
        }
        for (const QByteArray& chunk : std::as_const(reply.chunks))
            m_socket->write(chunk);
        m_queue.pop_front();
    }
}

void SimConnection::onTimer()
{
    if (m_waiting) {
        m_waiting = false;
        pump();
        return;
    }
    if (!m_trickle.isEmpty()) {
        m_socket->write(m_trickle.left(1));
        m_socket->flush();
        m_trickle.remove(0, 1);
        if (!m_trickle.isEmpty()) {
            m_timer.start(m_trickleMs);
            return;
        }
    }
    pump();
}
