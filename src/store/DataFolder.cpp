#include "store/DataFolder.h"

#include <QDir>
#include <QStandardPaths>

DataFolder::DataFolder(const QString& root)
    : m_root(QDir::cleanPath(root.isEmpty() ? defaultRoot() : QDir(root).absolutePath()))
{ }

QString DataFolder::defaultRoot()
{
    // The generic location plus our own name, so the folder does not move when a program
    // (the station, the command line, a test) sets another application or organisation name.
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/kx410";
}

QString DataFolder::configFile() const
{
    return m_root + u"/Config.cfg";
}

QString DataFolder::mainDatabase() const
{
    return m_root + u"/KX410_DB200.db";
}

QString DataFolder::languageDatabase() const
{
    return m_root + u"/KX-410_Lang.db";
}

QString DataFolder::backupFolder() const
{
    return m_root + u"/Yedek";
}

QString DataFolder::pictureFolder() const
{
    return m_root + u"/Resimler";
}

QString DataFolder::lockFile() const
{
    return m_root + u"/kx410.lock";
}

QString DataFolder::schedulerLockFile() const
{
    return m_root + u"/kx410-scheduler.lock";
}

bool DataFolder::ensureExists(QString* error) const
{
    for (const QString& path : { m_root, backupFolder(), pictureFolder() }) {
        if (!QDir().mkpath(path)) {
            if (error)
                *error = QStringLiteral("cannot create the folder %1").arg(QDir::toNativeSeparators(path));
            return false;
        }
    }
    return true;
}
