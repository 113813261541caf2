#include "operations/backup/PassageBackup.h"

#include "operations/backup/BackupCheck.h"
#include "operations/records/RecordWriteLock.h"
#include "store/Database.h"
#include "store/Transaction.h"
#include "store/Whereabouts.h"

using namespace Qt::StringLiterals;

namespace {

const QString CountBefore = u"SELECT count(*) FROM \"AccessDatas\" WHERE \"Tarih\" < ?"_s;

} // namespace

PassageBackup::PassageBackup(Database& db, const QString& backupFolder)
    : m_db(db)
    , m_folder(backupFolder)
    , m_copy(&BackupCopy::make)
{ }

void PassageBackup::setCopyMaker(CopyMaker maker)
{
    m_copy = std::move(maker);
}

PassageBackup::Result PassageBackup::backup(const QDateTime& moment)
{
    Result result = copyAndCheck(moment, moment);
    if (!result.verified)
        return result;
    const qint64 count = storedBefore(m_db, moment, &result.detail);
    if (count != result.passagesInBackup) {
        if (count >= 0)
            result.detail
                = u"The backup holds %1 passages dated before %2, the database %3."_s.arg(result.passagesInBackup)
                      .arg(moment.toString(Qt::ISODate))
                      .arg(count);
        result.verified = false;
        result.message = verifyFailedMessage();
        return result;
    }
    result.ok = true;
    result.message = Message(u"Yedekleme başarı ile tamamlandı."_s).newLine().value(result.backupPath);
    return result;
}

PassageBackup::Result PassageBackup::backupAndRemove(const QDateTime& cutoff, const QDateTime& moment)
{
    Result result = copyAndCheck(cutoff, moment);
    if (!result.verified)
        return result;
    if (!removeBefore(cutoff, result.passagesInBackup, result))
        return result;
    result.ok = true;
    result.message = Message(u"Yedekleme başarı ile tamamlandı."_s)
                         .newLine()
                         .value(result.backupPath)
                         .newLine()
                         .value(result.removed)
                         .add(u" eski geçiş kaydı silindi."_s);
    return result;
}

PassageBackup::Result PassageBackup::copyAndCheck(const QDateTime& cutoff, const QDateTime& moment)
{
    Result result;
    const BackupCopy::Result copy = m_copy(m_db, m_folder, moment);
    if (!copy.ok) {
        result.message = Message(copy.failure).newLine().add(u"Hiçbir kayıt silinmedi."_s);
        result.detail = copy.detail;
        return result;
    }
    result.backedUp = true;
    result.backupPath = copy.path;
    const BackupCheck::Summary summary = BackupCheck::read(copy.path, cutoff);
    if (!summary.ok) {
        result.message = verifyFailedMessage();
        result.detail = summary.error;
        return result;
    }
    result.verified = true;
    result.passagesInBackup = summary.passagesBefore;
    return result;
}

bool PassageBackup::removeBefore(const QDateTime& cutoff, qint64 expected, Result& result)
{
    const auto refuse = [&](const Message& message, const QString& detail) {
        result.message = message;
        result.detail = detail;
        return false;
    };
    RecordWriteLock lock;
    Transaction transaction(m_db);
    if (!transaction.isActive())
        return refuse(Message(u"Eski kayıtlar silinemedi!"_s), transaction.error());
    QString error;
    if (!lock.acquire(m_db, &error))
        return refuse(Message(u"Eski kayıtlar silinemedi!"_s), error);
    const qint64 stored = storedBefore(m_db, cutoff, &error);
    if (stored < 0)
        return refuse(Message(u"Eski kayıtlar silinemedi!"_s), error);
    if (stored != expected) {
        result.verified = false;
        return refuse(verifyFailedMessage(),
                      u"The backup holds %1 passages dated before %2, the database %3."_s.arg(expected)
                          .arg(cutoff.toString(Qt::ISODate))
                          .arg(stored));
    }
    const int removed
        = m_db.execCount(u"DELETE FROM \"AccessDatas\" WHERE \"Tarih\" < ?"_s, { m_db.toSql(cutoff) }, &error);
    if (removed < 0 || removed != expected)
        return refuse(Message(u"Eski kayıtlar silinemedi!"_s),
                      removed < 0 ? error
                                  : u"%1 rows matched the removal, %2 were expected."_s.arg(removed).arg(expected));
    if (!Whereabouts::forgetBefore(m_db, cutoff, &error))
        return refuse(Message(u"Eski kayıtlar silinemedi!"_s), error);
    if (!transaction.commit(&error))
        return refuse(Message(u"Eski kayıtlar silinemedi!"_s), error);
    result.removed = removed;
    return true;
}

qint64 PassageBackup::storedBefore(const Database& db, const QDateTime& cutoff, QString* error)
{
    const QVariant count = db.scalar(CountBefore, { db.toSql(cutoff) }, error);
    return count.isValid() ? count.toLongLong() : -1;
}

Message PassageBackup::verifyFailedMessage()
{
    return Message(u"Yedek doğrulanamadı, hiçbir kayıt silinmedi!"_s);
}
