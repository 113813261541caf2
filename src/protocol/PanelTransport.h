#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>

// The narrow channel a panel link talks through. The real one is TCP; tests substitute their own.
// All calls block and are made from one thread.
class PanelTransport
{
public:
    virtual ~PanelTransport();

    // Opens a connection, waiting at most timeoutMs; true when connected.
    virtual bool open(const QString& host, quint16 port, int timeoutMs) = 0;
    virtual bool isOpen() const = 0;
    // Hands bytes to the connection; false when they could not be sent.
    virtual bool send(const QByteArray& bytes) = 0;
    // What arrives before the deadline: at least one byte, or nothing when the deadline passed or
    // the connection is gone.
    virtual QByteArray receive(QDeadlineTimer deadline) = 0;
    virtual void close() = 0;
};
