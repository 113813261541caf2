#include "operations/records/RecordWriteLock.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {

QMutex& writers()
{
    static QMutex mutex;
    return mutex;
}

// Any fixed number shared by every station process working on the database.
constexpr qint64 AdvisoryKey = 410041;

} // namespace

RecordWriteLock::RecordWriteLock()
    : m_locker(&writers())
{ }

bool RecordWriteLock::acquire(Database& db, QString* error)
{
    if (!db.isPostgreSQL())
        return true;
    QSqlQuery q = db.query(u"SELECT pg_advisory_xact_lock(?)"_s, { AdvisoryKey }, error);
    return q.isActive();
}
