#pragma once

#include "SimFrameCutter.h"
#include "SimPanel.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <deque>

class QTcpSocket;

// One station link to a panel: cuts requests out of the stream, asks the panel for each reply and
// sends the replies in order, with the delays and trickling the panel's fault asks for.
class SimConnection : public QObject
{
    Q_OBJECT

public:
    SimConnection(QTcpSocket* socket, SimPanel* panel, QObject* parent = nullptr);

    void close();

private:
    void onReadyRead();
    void pump();
    void onTimer();

    static constexpr size_t kMaxQueued = 256;
    static constexpr qint64 kMaxUnsentBytes = 16 * 1024 * 1024;

    QTcpSocket* m_socket;
    QPointer<SimPanel> m_panel;
    SimFrameCutter m_cutter;
    std::deque<SimPanel::Reply> m_queue;
    QTimer m_timer;
    bool m_waiting = false;
    QByteArray m_trickle;
    int m_trickleMs = 1;
};
