#pragma once

#include <QList>
#include <QString>

class Clock;
class Database;

// What a report window needs from the station: the main database (on the window thread), whether
// this is a client station and which panels it watches, where the backups are kept, and the clock.
struct ReportContext
{
    Database* db = nullptr;
    bool clientStation = false;
    QList<int> watchedPanels;
    QString backupFolder;
    // The station's clock: today's date in the choices, the moment printed on the pages.
    const Clock* clock = nullptr;
};
