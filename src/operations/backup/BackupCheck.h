#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

// Opens a backup made by BackupCopy and reads its passage records: a SQLite copy through SQLite
// (after its own integrity check), a PostgreSQL dump through pg_restore, whose copy of
// AccessDatas is read row by row without restoring it anywhere.
class BackupCheck
{
public:
    struct Summary
    {
        bool ok = false;
        qint64 passages = 0;
        // Passages with a date before the cut-off asked for (all of them without one).
        qint64 passagesBefore = 0;
        QDateTime oldest;
        QDateTime newest;
        QString error;
    };

    // Reads the backup at path; passagesBefore counts the rows dated before cutoff (an invalid
    // cutoff counts every dated row).
    static Summary read(const QString& path, const QDateTime& cutoff = {});

private:
    static Summary readCopy(const QString& path, const QDateTime& cutoff);
    static Summary readDump(const QString& path, const QDateTime& cutoff);
};
