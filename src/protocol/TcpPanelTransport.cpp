#include "protocol/TcpPanelTransport.h"

#include <QTcpSocket>

TcpPanelTransport::TcpPanelTransport() = default;

TcpPanelTransport::~TcpPanelTransport()
{
    close();
}

bool TcpPanelTransport::open(const QString& host, quint16 port, int timeoutMs)
{
    close();
    m_socket = std::make_unique<QTcpSocket>();
    m_socket->connectToHost(host, port);
    if (m_socket->waitForConnected(timeoutMs))
        return true;
    close();
    return false;
}

bool TcpPanelTransport::isOpen() const
{
    return m_socket && m_socket->state() == QAbstractSocket::ConnectedState;
}

bool TcpPanelTransport::send(const QByteArray& bytes)
{
    if (!isOpen())
        return false;
    if (m_socket->write(bytes) != bytes.size())
        return false;
    // Handed to the system at once, before the answer's deadline starts: a frame fits its buffer,
    // so this costs no wait and no poll, which 64 panels' lanes feel. Only what did not fit waits.
    m_socket->flush();
    if (m_socket->bytesToWrite() > 0)
        m_socket->waitForBytesWritten(1000);
    return true;
}

QByteArray TcpPanelTransport::receive(QDeadlineTimer deadline)
{
    if (!m_socket)
        return {};
    if (m_socket->bytesAvailable() > 0)
        return m_socket->readAll();
    while (m_socket->state() == QAbstractSocket::ConnectedState) {
        const qint64 remaining = deadline.remainingTime();
        const int waitMs = remaining < 0 ? -1 : static_cast<int>(qMin<qint64>(remaining, 1 << 30));
        const bool ready = m_socket->waitForReadyRead(waitMs);
        if (m_socket->bytesAvailable() > 0)
            return m_socket->readAll();
        if (!ready && deadline.hasExpired())
            break;
        if (remaining == 0)
            break;
    }
    // The peer may have closed after its last bytes.
    return m_socket->readAll();
}

void TcpPanelTransport::close()
{
    if (!m_socket)
        return;
    m_socket->abort();
    m_socket.reset();
}
