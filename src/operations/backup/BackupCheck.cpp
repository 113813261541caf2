#include "operations/backup/BackupCheck.h"

#include "operations/backup/BackupName.h"
#include "operations/backup/DumpTableReader.h"
#include "store/Database.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

BackupCheck::Summary failed(const QString& error)
{
    BackupCheck::Summary summary;
    summary.error = error;
    return summary;
}

} // namespace

BackupCheck::Summary BackupCheck::read(const QString& path, const QDateTime& cutoff)
{
    if (!QFileInfo(path).isFile())
        return failed(u"The backup file does not exist: "_s + path);
    return BackupName::isDump(path) ? readDump(path, cutoff) : readCopy(path, cutoff);
}

BackupCheck::Summary BackupCheck::readCopy(const QString& path, const QDateTime& cutoff)
{
    Summary summary;
    Database copy;
    QString error;
    if (!copy.open(path, Database::OpenMode::ReadOnly, &error))
        return failed(error);
    {
        const QVariant check = copy.scalar(u"PRAGMA quick_check"_s, {}, &error);
        if (check.toString() != u"ok"_s)
            return failed(u"The backup is damaged: "_s + (error.isEmpty() ? check.toString() : error));
        if (!copy.tableExists(u"AccessDatas"_s))
            return failed(u"The backup holds no passage records table: "_s + path);
        const QList<QVariantList> rows
            = copy.rows(u"SELECT count(*), min(\"Tarih\"), max(\"Tarih\") FROM \"AccessDatas\""_s, {}, &error);
        if (rows.size() != 1)
            return failed(u"The passage records of the backup cannot be read: "_s + error);
        summary.passages = rows.first().value(0).toLongLong();
        summary.oldest = Database::dateTime(rows.first().value(1));
        summary.newest = Database::dateTime(rows.first().value(2));
        const QVariant before = cutoff.isValid()
            ? copy.scalar(u"SELECT count(*) FROM \"AccessDatas\" WHERE \"Tarih\" < ?"_s, { copy.toSql(cutoff) }, &error)
            : copy.scalar(u"SELECT count(*) FROM \"AccessDatas\" WHERE \"Tarih\" IS NOT NULL"_s, {}, &error);
        if (!before.isValid())
            return failed(u"The passage records of the backup cannot be counted: "_s + error);
        summary.passagesBefore = before.toLongLong();
    }
    summary.ok = true;
    return summary;
}

BackupCheck::Summary BackupCheck::readDump(const QString& path, const QDateTime& cutoff)
{
    Summary summary;
    QString error;
    const bool read = DumpTableReader::read(
        path, u"AccessDatas"_s, u"Tarih"_s,
        [&](const QString& text) {
            ++summary.passages;
            if (text.isNull())
                return;
            const QDateTime when = Database::dateTime(text);
            if (!when.isValid())
                return;
            if (!summary.oldest.isValid() || when < summary.oldest)
                summary.oldest = when;
            if (!summary.newest.isValid() || when > summary.newest)
                summary.newest = when;
            if (!cutoff.isValid() || when < cutoff)
                ++summary.passagesBefore;
        },
        &error);
    if (!read)
        return failed(error);
    summary.ok = true;
    return summary;
}
