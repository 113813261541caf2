#pragma once

#include <QList>
#include <QString>

class Database;

// What a report window needs from the station: the main database (on the window thread), whether
// this is a client station and which panels it watches, and where the backups are kept.
struct ReportContext
{
    Database* db = nullptr;
    bool clientStation = false;
    QList<int> watchedPanels;
    QString backupFolder;
};
