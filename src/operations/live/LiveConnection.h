#pragma once

#include "protocol/LiveFrameCutter.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>

class QTcpSocket;

// One panel's pushed TCP connection: its socket and the frame cutter that keeps a partly arrived
// frame between reads (never more than one frame's worth). The panel is known from its first
// valid frame; until then the connection may be anything, and is the first to be closed.
class LiveConnection
{
public:
    // Bytes taken from the socket per piece: the cutter never holds more than one piece and a frame.
    static constexpr qint64 ReadChunk = 64 * 1024;

    explicit LiveConnection(QTcpSocket* socket);

    QTcpSocket* socket() const { return m_socket; }
    qint32 panelNumber() const { return m_panel; }
    bool isIdentified() const { return m_panel > 0; }
    // Notes a frame that parsed as a passage or a status; true for the first, which names the
    // panel.
    bool noteValidFrame(qint32 panel);
    // Since the last valid frame, or since the connection opened when none came.
    qint64 silentMs() const { return m_lastValid.elapsed(); }

    // Reads what the socket holds and returns the whole frames cut from it; *dropped counts the
    // pieces dropped as noise.
    QList<QByteArray> readFrames(int* dropped = nullptr);

private:
    QTcpSocket* m_socket;
    LiveFrameCutter m_cutter;
    qint32 m_panel = 0;
    // Elapsed, not the station clock: this is the health of a socket, and setting the clock must
    // not close every panel's link (nor keep a dead one).
    QElapsedTimer m_lastValid;
};
