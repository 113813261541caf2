#pragma once

#include <QDateTime>
#include <QMutex>

// The station's "now": every deadline, displayed time, stored moment and schedule reads it here,
// so a test can put the whole station at any moment and move it on. Times are local, as the
// panels and the database keep them.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;

    // The computer's own clock; one object for the whole process.
    static const Clock& system();
};

// The computer's clock.
class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
};

// A clock that stands still until it is set or moved on; safe to read from any thread.
class ManualClock final : public Clock
{
public:
    explicit ManualClock(const QDateTime& start);

    QDateTime now() const override;
    void set(const QDateTime& moment);
    void advanceMs(qint64 milliseconds);
    void advanceSecs(qint64 seconds) { advanceMs(seconds * 1000); }

private:
    mutable QMutex m_mutex;
    QDateTime m_now;
};

// The computer's clock moved to read `start` at the moment it was made, then running on with it:
// the service started "as if" at another moment, for trying out a schedule.
class OffsetClock final : public Clock
{
public:
    explicit OffsetClock(const QDateTime& start);

    QDateTime now() const override;

private:
    qint64 m_offsetMs = 0;
};
