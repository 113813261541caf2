#include "operations/live/LiveConnection.h"

#include <QTcpSocket>

LiveConnection::LiveConnection(QTcpSocket* socket)
    : m_socket(socket)
{
    m_lastValid.start();
}

bool LiveConnection::noteValidFrame(qint32 panel)
{
    m_lastValid.restart();
    if (m_panel != 0 || panel <= 0)
        return false;
    m_panel = panel;
    return true;
}

QList<QByteArray> LiveConnection::readFrames(int* dropped)
{
    QList<QByteArray> frames;
    int skipped = 0;
    while (m_socket->bytesAvailable() > 0) {
        m_cutter.feed(m_socket->read(ReadChunk));
        QByteArray frame;
        for (;;) {
            const LiveFrameCutter::Result result = m_cutter.next(frame);
            if (result == LiveFrameCutter::Result::NeedMore)
                break;
            if (result == LiveFrameCutter::Result::Skipped)
                ++skipped;
            else
                frames.append(frame);
        }
    }
    if (dropped)
        *dropped = skipped;
    return frames;
}
