#include "operations/records/WhereaboutsRepair.h"

#include "operations/records/RecordWriteLock.h"
#include "store/Database.h"
#include "store/Transaction.h"
#include "store/Whereabouts.h"

qint64 WhereaboutsRepair::run(Database& db, QString* error)
{
    RecordWriteLock lock;
    Transaction transaction(db);
    if (!transaction.isActive()) {
        if (error)
            *error = transaction.error();
        return -1;
    }
    if (!lock.acquire(db, error))
        return -1;
    const qint64 made = Whereabouts::rebuild(db, error);
    if (made < 0 || !transaction.commit(error))
        return -1;
    return made;
}
