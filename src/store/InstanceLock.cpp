#include "store/InstanceLock.h"

#include <QLockFile>

InstanceLock::InstanceLock(const QString& lockFilePath)
    : m_lock(std::make_unique<QLockFile>(lockFilePath))
{
    // Only a dead owner makes a lock stale: a station may run for months.
    m_lock->setStaleLockTime(0);
}

InstanceLock::~InstanceLock() = default;

bool InstanceLock::tryLock()
{
    if (m_lock->isLocked())
        return true;
    return m_lock->tryLock(0);
}

bool InstanceLock::isLocked() const
{
    return m_lock->isLocked();
}

void InstanceLock::unlock()
{
    m_lock->unlock();
}

Message InstanceLock::alreadyRunningMessage()
{
    return Message(QStringLiteral("Halvoran KX-410 Geçiş Kontrol Paneli Yazılımı V2.0 şu anda zaten çalışıyor, veya "
                                  "düzgün kapatılmamış."))
        .newLine()
        .add(QStringLiteral("Windows Görev Yöneticisi -> İşlemler sekmesini kullanarak sonlandırınız!"));
}
