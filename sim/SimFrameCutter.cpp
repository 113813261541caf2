#include "SimFrameCutter.h"

SimFrameCutter::SimFrameCutter(qsizetype maxFrame)
    : m_maxFrame(maxFrame)
{ }

QList<QByteArray> SimFrameCutter::feed(const QByteArray& data)
{
    QList<QByteArray> frames;
    m_buffer.append(data);
    qsizetype from = 0;
    for (;;) {
        const qsizetype end = m_buffer.indexOf("**", from);
        if (end < 0)
            break;
        // The frame starts at the last "%" before its end, so noise that holds a "%" cannot swallow
        // the request that follows it.
        const qsizetype start = end > from ? m_buffer.lastIndexOf('%', end - 1) : -1;
        if (start >= from && end + 2 - start <= m_maxFrame)
            frames.append(m_buffer.mid(start, end + 2 - start));
        from = end + 2;
    }
    m_buffer.remove(0, from);
    trimUnfinished();
    return frames;
}

qsizetype SimFrameCutter::pending() const
{
    return m_buffer.size();
}

void SimFrameCutter::clear()
{
    m_buffer.clear();
}

void SimFrameCutter::trimUnfinished()
{
    // Only text from the last "%" on can still become a frame; a trailing "*" may be the first half
    // of a frame end whose start was already dropped.
    const qsizetype start = m_buffer.lastIndexOf('%');
    if (start > 0)
        m_buffer.remove(0, start);
    else if (start < 0)
        m_buffer = m_buffer.endsWith('*') ? QByteArray("*") : QByteArray();
    if (m_buffer.size() > m_maxFrame)
        m_buffer = m_buffer.endsWith('*') ? QByteArray("*") : QByteArray();
}
