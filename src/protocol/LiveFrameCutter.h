#pragma once

#include <QByteArray>
#include <QByteArrayView>

// Cuts the frames panels push ("%" .. "**") out of a byte stream that may arrive in any pieces and
// carry noise. Feed every arrival, then call next() until it says NeedMore. What it keeps between
// arrivals never exceeds one frame's worth of bytes.
class LiveFrameCutter
{
public:
    enum class Result
    {
        // Nothing complete is buffered.
        NeedMore,
        // Noise or a broken or overlong piece was dropped; call again.
        Skipped,
        // frame holds one "%" .. "**" piece.
        Frame,
    };

    // Longest piece taken for a frame; longer ones are noise.
    static constexpr int MaxFrameLength = 256;

    void feed(QByteArrayView bytes);
    Result next(QByteArray& frame);
    // Bytes held for the next call.
    qsizetype buffered() const { return m_buffer.size() - m_pos; }
    // Bytes dropped so far as noise.
    qint64 droppedBytes() const { return m_dropped; }
    void clear();

private:
    void drop(qsizetype count, bool counted);
    void compact();

    QByteArray m_buffer;
    qsizetype m_pos = 0;
    qint64 m_dropped = 0;
};
