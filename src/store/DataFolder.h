#pragma once

#include <QString>

// Where the station keeps its files: the settings record, the main and language databases, the
// backup folder and the photographs. By default the per-user application data folder.
class DataFolder
{
public:
    // An empty root means the default folder.
    explicit DataFolder(const QString& root = {});

    // The per-user application data folder of the station ("kx410"), independent of the
    // application name the running program has set.
    static QString defaultRoot();

    QString root() const { return m_root; }
    QString configFile() const;
    QString mainDatabase() const;
    QString languageDatabase() const;
    QString backupFolder() const;
    QString pictureFolder() const;
    QString lockFile() const;
    // Held by whichever program runs the daily schedule of this folder: the service or one window.
    QString schedulerLockFile() const;

    // Creates the folder and its Yedek/ and Resimler/ subfolders when missing.
    bool ensureExists(QString* error = nullptr) const;

private:
    QString m_root;
};
