#include "reports/ReportCount.h"

#include "reports/ReportConnections.h"
#include "reports/ReportRowSource.h"
#include "reports/ReportStatement.h"
#include "store/Database.h"

#include <QtConcurrent/QtConcurrentRun>

using namespace Qt::StringLiterals;

QFuture<qint64> ReportCount::start(const Database& db, const ReportStatement& statement)
{
    const Database::OpenMode mode
        = ReportConnections::isReadOnly(db) ? Database::OpenMode::ReadOnly : Database::OpenMode::ExistingOnly;
    return QtConcurrent::run([location = db.location(), mode, statement]() -> qint64 {
        Database own;
        QString error;
        if (!own.open(location, mode, &error)) {
            qWarning().noquote() << "report count:" << error;
            return -1;
        }
        const qint64 count = ReportRowSource::count(own, statement, &error);
        if (count < 0)
            qWarning().noquote() << "report count:" << error;
        return count;
    });
}
