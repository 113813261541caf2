#pragma once

#include "operations/backup/BackupCopy.h"
#include "store/Message.h"

#include <QDateTime>
#include <QString>
#include <functional>

class Database;

// A backup of the station's database that is checked before it is trusted, and the removal of
// old passage records that only such a backup allows. The copy is opened again and its passages
// dated before the cut-off are counted; records are removed only when that count equals the main
// database's, taken while every writer of AccessDatas waits, and in the same transaction as the
// removal: a passage stored meanwhile is either in both counts or makes them differ, and a
// difference removes nothing.
class PassageBackup
{
public:
    // Makes the copy; tests hand in their own to make a copy that fails its check.
    using CopyMaker = std::function<BackupCopy::Result(Database& db, const QString& folder, const QDateTime& moment)>;

    struct Result
    {
        bool ok = false;
        bool backedUp = false;
        bool verified = false;
        QString backupPath;
        qint64 passagesInBackup = 0;
        qint64 removed = 0;
        // What the person is told, success or failure.
        Message message;
        // Why it failed, for the log.
        QString detail;
    };

    PassageBackup(Database& db, const QString& backupFolder);
    void setCopyMaker(CopyMaker maker);

    // A checked backup: the copy must hold as many passages dated before `moment` as the
    // database does.
    Result backup(const QDateTime& moment);
    // A checked backup, then the removal of the passages dated before `cutoff`.
    Result backupAndRemove(const QDateTime& cutoff, const QDateTime& moment);

    static Message verifyFailedMessage();
    // The main database's passages dated before cutoff; -1 when they cannot be counted.
    static qint64 storedBefore(const Database& db, const QDateTime& cutoff, QString* error = nullptr);

private:
    Result copyAndCheck(const QDateTime& cutoff, const QDateTime& moment);
    bool removeBefore(const QDateTime& cutoff, qint64 expected, Result& result);

    Database& m_db;
    QString m_folder;
    CopyMaker m_copy;
};
