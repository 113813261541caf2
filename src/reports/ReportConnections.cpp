#include "reports/ReportConnections.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace {

// The main database and one backup are the usual pair; anything beyond is closed.
constexpr std::size_t kMostKept = 2;

// Destroyed at the end of its thread, which closes whatever is still kept.
thread_local std::vector<std::unique_ptr<Database>> t_kept;
// Set by closeAll(): reports still open then close their connections when they end, until a new
// report starts.
thread_local bool t_closing = false;

bool sameDatabase(const Database& kept, const Database& wanted)
{
    return kept.location() == wanted.location()
        && ReportConnections::isReadOnly(kept) == ReportConnections::isReadOnly(wanted);
}

// A server may have dropped a connection that sat idle (restart, a forced disconnect); a file
// connection stays good.
bool stillAnswers(const Database& kept)
{
    return kept.isSQLite() || kept.scalar(u"SELECT 1"_s).isValid();
}

} // namespace

std::unique_ptr<Database> ReportConnections::take(const Database& db, QString* error)
{
    t_closing = false;
    for (auto it = t_kept.begin(); it != t_kept.end(); ++it) {
        if (!sameDatabase(**it, db))
            continue;
        std::unique_ptr<Database> found = std::move(*it);
        t_kept.erase(it);
        if (stillAnswers(*found))
            return found;
        break;
    }
    QString why;
    auto fresh = std::make_unique<Database>();
    if (db.location().isEmpty())
        why = u"The database is not open."_s;
    else
        fresh->open(db.location(), isReadOnly(db) ? Database::OpenMode::ReadOnly : Database::OpenMode::ExistingOnly,
                    &why);
    if (!fresh->isOpen()) {
        if (error)
            *error = why;
        return nullptr;
    }
    return fresh;
}

void ReportConnections::giveBack(std::unique_ptr<Database> connection)
{
    if (!connection || !connection->isOpen() || t_closing)
        return;
    // A connection is left as it was taken: nothing of a report's reading stays open on it.
    if (connection->transactionDepth() > 0)
        connection->rollback();
    for (auto it = t_kept.begin(); it != t_kept.end(); ++it) {
        if (sameDatabase(**it, *connection)) {
            t_kept.erase(it);
            break;
        }
    }
    t_kept.insert(t_kept.begin(), std::move(connection));
    if (t_kept.size() > kMostKept)
        t_kept.resize(kMostKept);
}

void ReportConnections::close(const QString& location)
{
    std::erase_if(t_kept, [&location](const std::unique_ptr<Database>& kept) { return kept->location() == location; });
}

void ReportConnections::closeAll()
{
    t_closing = true;
    t_kept.clear();
}

bool ReportConnections::isReadOnly(const Database& db)
{
    return db.isSQLite() && db.connection().connectOptions().contains(u"QSQLITE_OPEN_READONLY"_s);
}

int ReportConnections::keptCount()
{
    return static_cast<int>(t_kept.size());
}
