#pragma once

#include <QString>
#include <QStringList>

// Command-line choices that change where the station finds its data.
struct StartupOptions
{
    // --data-dir DIR: the data folder instead of the per-user default.
    QString dataDir;
    // --db URL: the main database (a file path, file:// or postgresql:// address) instead of the
    // one the settings name.
    QString databaseOverride;
    // Whether the start takes the single-instance lock of the data folder.
    bool singleInstance = true;

    // Takes "--data-dir DIR", "--data-dir=DIR", "--db URL" and "--db=URL"; other arguments are
    // left for the caller.
    static StartupOptions fromArguments(const QStringList& arguments);
};
