#include "protocol/LiveFrameCutter.h"

void LiveFrameCutter::feed(QByteArrayView bytes)
{
    compact();
    m_buffer.append(bytes);
}

LiveFrameCutter::Result LiveFrameCutter::next(QByteArray& frame)
{
    // Line ends between frames are not noise.
    while (m_pos < m_buffer.size() && (m_buffer.at(m_pos) == '\r' || m_buffer.at(m_pos) == '\n'))
        drop(1, false);
    if (buffered() == 0) {
        compact();
        return Result::NeedMore;
    }
    const QByteArrayView rest = QByteArrayView(m_buffer).sliced(m_pos);
    const qsizetype start = rest.indexOf('%');
    if (start != 0) {
        drop(start < 0 ? rest.size() : start, true);
        return Result::Skipped;
    }
    // Only a frame's length is searched, so noise costs linear time however it arrives.
    const QByteArrayView window = rest.first(qMin<qsizetype>(rest.size(), MaxFrameLength));
    const qsizetype nextStart = window.indexOf('%', 1);
    const qsizetype end = (nextStart > 0 ? window.first(nextStart) : window).indexOf("**", 1);
    if (nextStart > 0 && (end < 0 || nextStart < end)) {
        drop(nextStart, true);
        return Result::Skipped;
    }
    if (end < 0 || end + 2 > MaxFrameLength) {
        if (rest.size() < MaxFrameLength)
            return Result::NeedMore;
        drop(end < 0 ? window.size() : end + 2, true);
        return Result::Skipped;
    }
    frame = rest.first(end + 2).toByteArray();
    m_pos += end + 2;
    return Result::Frame;
}

void LiveFrameCutter::clear()
{
    m_buffer.clear();
    m_pos = 0;
}

void LiveFrameCutter::drop(qsizetype count, bool counted)
{
    m_pos += count;
    if (counted)
        m_dropped += count;
}

void LiveFrameCutter::compact()
{
    if (m_pos == 0)
        return;
    m_buffer.remove(0, m_pos);
    m_pos = 0;
    if (m_buffer.isEmpty())
        m_buffer.squeeze();
}
