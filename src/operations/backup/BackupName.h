#pragma once

#include "store/Database.h"

#include <QDateTime>
#include <QString>

// How backups are named in the backup folder: "Yedek-" + a label + ".db" for a copy of a SQLite
// database, or + ".dump" for a PostgreSQL dump in pg_dump's custom format. The label begins with
// the first day of the month of the backup ("01_03_2026"), then " - ", then the moment of the
// backup in two-digit parts ("15_03_26_10_20_30"), so that no two backups share a name.
class BackupName
{
public:
    static QString label(const QDateTime& moment);
    static QString fileName(const QDateTime& moment, Database::Engine engine);
    // True for the names fileName() makes (either kind).
    static bool isBackupFile(const QString& fileName);
    static bool isDump(const QString& path);
};
