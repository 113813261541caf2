#include "operations/backup/BackupName.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
const QString Prefix = u"Yedek-"_s;
const QString CopySuffix = u".db"_s;
const QString DumpSuffix = u".dump"_s;
} // namespace

QString BackupName::label(const QDateTime& moment)
{
    const QDate first(moment.date().year(), moment.date().month(), 1);
    return first.toString(u"dd_MM_yyyy"_s) + u" - "_s + moment.toString(u"dd_MM_yy_HH_mm_ss"_s);
}

QString BackupName::fileName(const QDateTime& moment, Database::Engine engine)
{
    return Prefix + label(moment) + (engine == Database::Engine::PostgreSQL ? DumpSuffix : CopySuffix);
}

bool BackupName::isBackupFile(const QString& fileName)
{
    return fileName.startsWith(Prefix) && (fileName.endsWith(CopySuffix) || fileName.endsWith(DumpSuffix));
}

bool BackupName::isDump(const QString& path)
{
    return QFileInfo(path).fileName().endsWith(DumpSuffix);
}
