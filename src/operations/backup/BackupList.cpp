#include "operations/backup/BackupList.h"

#include "operations/backup/BackupName.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

QList<BackupList::Entry> BackupList::in(const QString& folder)
{
    QList<Entry> entries;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        if (!BackupName::isBackupFile(file.fileName()))
            continue;
        entries.append({ file.absoluteFilePath(), file.fileName(), file.lastModified(), file.size(),
                         BackupName::isDump(file.fileName()) });
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.modified > b.modified; });
    return entries;
}
