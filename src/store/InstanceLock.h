#pragma once

#include "store/Message.h"

#include <QString>
#include <memory>

class QLockFile;

// Keeps a second station from starting on the same data folder. A lock left behind by a station
// that died (its process is gone) is taken over; a lock held by a running station is not, however
// old it is.
class InstanceLock
{
public:
    explicit InstanceLock(const QString& lockFilePath);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // True when this process now holds the lock.
    bool tryLock();
    bool isLocked() const;
    void unlock();

    // The message shown when another station holds the lock.
    static Message alreadyRunningMessage();

private:
    std::unique_ptr<QLockFile> m_lock;
};
