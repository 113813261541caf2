#pragma once

#include <QMutexLocker>
#include <QString>

class Database;

// Keeps the writers of AccessDatas (offline import, back-fill, live batches) one at a time, so
// that each one's look for already stored passages and its insert see the same table. Within the
// process a mutex does it; between processes SQLite's immediate transactions already do, and on
// PostgreSQL an advisory lock held to the end of the transaction.
class RecordWriteLock
{
public:
    // Takes the process-wide lock; call acquire() once the transaction is open.
    RecordWriteLock();
    bool acquire(Database& db, QString* error = nullptr);

private:
    QMutexLocker<QMutex> m_locker;
};
