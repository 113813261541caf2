#pragma once

#include <QByteArray>
#include <QList>

// Cuts request frames ("%" ... "**") out of a connection's byte stream. Bytes outside frames are
// dropped, and the buffer never holds more than a bounded amount of text without a frame end.
class SimFrameCutter
{
public:
    explicit SimFrameCutter(qsizetype maxFrame = 4096);

    // Appends what arrived and returns the complete frames, each from its "%" to its "**".
    QList<QByteArray> feed(const QByteArray& data);
    qsizetype pending() const;
    void clear();

private:
    void trimUnfinished();

    QByteArray m_buffer;
    qsizetype m_maxFrame;
};
