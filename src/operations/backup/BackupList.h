#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// The backups kept in the backup folder, newest first.
class BackupList
{
public:
    struct Entry
    {
        QString path;
        QString fileName;
        QDateTime modified;
        qint64 bytes = 0;
        bool dump = false;
    };

    static QList<Entry> in(const QString& folder);
};
