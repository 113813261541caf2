#include "operations/backup/BackupCopy.h"

#include "operations/backup/BackupName.h"
#include "operations/backup/PostgresTools.h"
#include "store/Database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

BackupCopy::Result failed(const Message& failure, const QString& detail)
{
    BackupCopy::Result result;
    result.failure = failure;
    result.detail = detail;
    return result;
}

// A name no earlier backup has taken (two backups within one second).
QString freePath(const QDir& folder, const QString& fileName)
{
    QString path = folder.filePath(fileName);
    const QFileInfo info(fileName);
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = folder.filePath(info.completeBaseName() + u" ("_s + QString::number(n) + u")."_s + info.suffix());
    return path;
}

} // namespace

BackupCopy::Result BackupCopy::make(Database& db, const QString& folder, const QDateTime& moment)
{
    if (!db.isOpen())
        return failed(copyFailedMessage(), u"The database is not open."_s);
    QDir dir(folder);
    if (!dir.mkpath(u"."_s) || !QFileInfo(folder).isDir())
        return failed(folderMessage(folder), u"The backup folder cannot be made: "_s + folder);
    if (!QFileInfo(folder).isWritable())
        return failed(folderMessage(folder), u"The backup folder is read-only: "_s + folder);

    const QString path = freePath(dir, BackupName::fileName(moment, db.engine()));
    Result result = db.isPostgreSQL() ? dumpPostgres(db, path) : copySqlite(db, path);
    if (!result.ok) {
        // Nothing holds the half-written file open: it is ours alone to remove.
        QFile::remove(path);
        return result;
    }
    result.path = path;
    return result;
}

BackupCopy::Result BackupCopy::copySqlite(Database& db, const QString& path)
{
    QString error;
    if (!db.exec(u"VACUUM INTO ?"_s, { path }, &error)) {
        // A full disk or a folder that refuses the file shows here, not at the checks above.
        const bool folderFault = error.contains(u"full"_s, Qt::CaseInsensitive)
            || error.contains(u"unable to open"_s, Qt::CaseInsensitive)
            || error.contains(u"readonly"_s, Qt::CaseInsensitive);
        return failed(folderFault ? folderMessage(QFileInfo(path).absolutePath()) : copyFailedMessage(),
                      u"VACUUM INTO "_s + path + u": "_s + error);
    }
    Result result;
    result.ok = true;
    return result;
}

BackupCopy::Result BackupCopy::dumpPostgres(Database& db, const QString& path)
{
    const QString program = PostgresTools::program(u"pg_dump"_s);
    if (program.isEmpty())
        return failed(copyFailedMessage(), u"pg_dump was not found (install the postgresql-client package)."_s);
    const DatabaseLocation location = DatabaseLocation::parse(db.location());
    QProcess dump;
    dump.setProcessEnvironment(PostgresTools::environment(location));
    QStringList arguments = PostgresTools::connectionArguments(location);
    arguments << u"--format=custom"_s << u"--file"_s << path << u"--dbname"_s << location.databaseName();
    dump.start(program, arguments);
    if (!dump.waitForStarted())
        return failed(copyFailedMessage(), program + u": "_s + dump.errorString());
    // A large database takes as long as it takes; the worker thread waits for it.
    dump.waitForFinished(-1);
    if (dump.exitStatus() != QProcess::NormalExit || dump.exitCode() != 0) {
        const QString why = QString::fromLocal8Bit(dump.readAllStandardError()).trimmed();
        const bool folderFault = why.contains(u"No space"_s, Qt::CaseInsensitive)
            || why.contains(u"could not open output file"_s, Qt::CaseInsensitive);
        return failed(folderFault ? folderMessage(QFileInfo(path).absolutePath()) : copyFailedMessage(),
                      u"pg_dump: "_s + why);
    }
    Result result;
    result.ok = true;
    return result;
}

Message BackupCopy::folderMessage(const QString& folder)
{
    return Message(u"Yedek klasörüne yazılamıyor!"_s).newLine().value(QDir::toNativeSeparators(folder));
}

Message BackupCopy::copyFailedMessage()
{
    return Message(u"Veritabanının yedeği alınamadı!"_s);
}
