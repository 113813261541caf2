#pragma once

#include "protocol/PanelTransport.h"

#include <memory>

class QTcpSocket;

// PanelTransport over a blocking QTcpSocket. The socket is created by open() on the calling thread,
// which must be the thread that uses it afterwards (a worker thread, never the window thread).
class TcpPanelTransport : public PanelTransport
{
public:
    TcpPanelTransport();
    ~TcpPanelTransport() override;

    bool open(const QString& host, quint16 port, int timeoutMs) override;
    bool isOpen() const override;
    bool send(const QByteArray& bytes) override;
    QByteArray receive(QDeadlineTimer deadline) override;
    void close() override;

private:
    std::unique_ptr<QTcpSocket> m_socket;
};
