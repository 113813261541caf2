#include "store/Clock.h"

#include <QMutexLocker>

const Clock& Clock::system()
{
    static const SystemClock clock;
    return clock;
}

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

ManualClock::ManualClock(const QDateTime& start)
    : m_now(start)
{ }

QDateTime ManualClock::now() const
{
    const QMutexLocker lock(&m_mutex);
    return m_now;
}

void ManualClock::set(const QDateTime& moment)
{
    const QMutexLocker lock(&m_mutex);
    m_now = moment;
}

void ManualClock::advanceMs(qint64 milliseconds)
{
    const QMutexLocker lock(&m_mutex);
    m_now = m_now.addMSecs(milliseconds);
}

OffsetClock::OffsetClock(const QDateTime& start)
    : m_offsetMs(QDateTime::currentDateTime().msecsTo(start))
{ }

QDateTime OffsetClock::now() const
{
    return QDateTime::currentDateTime().addMSecs(m_offsetMs);
}
