#pragma once

#include "store/Message.h"

#include <QDateTime>
#include <QString>

class Database;

// Makes one backup of the station's database in the backup folder, without ever touching the
// database file itself: a SQLite database is written out by SQLite ("VACUUM INTO", a consistent
// copy while other connections go on writing), a PostgreSQL database is dumped by pg_dump in its
// custom format. A copy that fails half-way is removed again.
class BackupCopy
{
public:
    struct Result
    {
        bool ok = false;
        QString path;
        // What the person is told when it failed.
        Message failure;
        // Why, for the log.
        QString detail;
    };

    static Result make(Database& db, const QString& folder, const QDateTime& moment);

    // "Yedek klasörüne yazılamıyor!" with the folder.
    static Message folderMessage(const QString& folder);
    // "Veritabanının yedeği alınamadı!".
    static Message copyFailedMessage();

private:
    static Result copySqlite(Database& db, const QString& path);
    static Result dumpPostgres(Database& db, const QString& path);
};
