#include "store/Database.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlRecord>
#include <atomic>

#ifdef KX_HAVE_SQLITE3_API
#include <sqlite3.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr auto kDateTimeFormat = "yyyy-MM-dd HH:mm:ss";

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

QString errorText(const QSqlError& e)
{
    QString text = e.databaseText().trimmed();
    if (text.isEmpty())
        text = e.text().trimmed();
    if (!e.driverText().isEmpty() && !text.contains(e.driverText()))
        text = e.driverText() + u": "_s + text;
    return text;
}

} // namespace

Database::Database() = default;

Database::~Database()
{
    release();
}

Database::Database(Database&& other) noexcept
    : m_db(other.m_db)
    , m_connectionName(other.m_connectionName)
    , m_location(other.m_location)
    , m_engine(other.m_engine)
    , m_transactionDepth(other.m_transactionDepth)
{
    other.m_db = QSqlDatabase();
    other.m_connectionName.clear();
    other.m_location.clear();
    other.m_engine = Engine::None;
    other.m_transactionDepth = 0;
}

Database& Database::operator=(Database&& other) noexcept
{
    if (this != &other) {
        release();
        m_db = other.m_db;
        m_connectionName = other.m_connectionName;
        m_location = other.m_location;
        m_engine = other.m_engine;
        m_transactionDepth = other.m_transactionDepth;
        other.m_db = QSqlDatabase();
        other.m_connectionName.clear();
        other.m_location.clear();
        other.m_engine = Engine::None;
        other.m_transactionDepth = 0;
    }
    return *this;
}

QString Database::nextConnectionName(const QString& hint)
{
    static std::atomic<int> counter{ 0 };
    const int n = ++counter;
    return u"kx-"_s + (hint.isEmpty() ? u"db"_s : hint) + u'-' + QString::number(n);
}

bool Database::open(const QString& location, OpenMode mode, QString* error)
{
    close();
    const DatabaseLocation loc = DatabaseLocation::parse(location);
    if (!loc.isValid()) {
        setError(error, loc.error());
        return false;
    }
    const bool ok
        = loc.kind() == DatabaseLocation::Kind::File ? openFile(loc, mode, error) : openServer(loc, mode, error);
    if (!ok) {
        release();
        return false;
    }
    m_location = loc.text();
    return true;
}

bool Database::openFile(const DatabaseLocation& loc, OpenMode mode, QString* error)
{
    const QString path = loc.filePath();
    const QFileInfo info(path);
    if (info.exists()) {
        if (!info.isFile()) {
            setError(error, u"The database location is not a file: "_s + path);
            return false;
        }
        // Only stat() here: opening and closing the file outside SQLite would drop every POSIX lock
        // this process holds on it, and another process would then delete our write-ahead log.
        // SQLite itself refuses a file that is not a database (checked below).
        if (info.size() == 0 && mode != OpenMode::CreateIfMissing) {
            setError(error, u"The database file is empty: "_s + path);
            return false;
        }
    } else {
        if (mode != OpenMode::CreateIfMissing) {
            setError(error, u"The database file does not exist or cannot be reached: "_s + path);
            return false;
        }
        if (!info.absoluteDir().exists()) {
            setError(error, u"The folder of the database does not exist: "_s + info.absolutePath());
            return false;
        }
    }

    m_connectionName = nextConnectionName(m_nameHint.isEmpty() ? u"sqlite"_s : m_nameHint);
    m_db = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connectionName);
    if (!m_db.isValid()) {
        setError(error, u"The SQLite driver of Qt is not installed."_s);
        return false;
    }
    m_engine = Engine::SQLite;
    m_db.setDatabaseName(path);
    // Several threads (and possibly stations) write: wait for a lock rather than fail at once.
    m_db.setConnectOptions(mode == OpenMode::ReadOnly ? u"QSQLITE_BUSY_TIMEOUT=10000;QSQLITE_OPEN_READONLY"_s
                                                      : u"QSQLITE_BUSY_TIMEOUT=10000"_s);
    if (!m_db.open()) {
        setError(error, u"The database cannot be opened: "_s + path + u" ("_s + errorText(m_db.lastError()) + u')');
        return false;
    }
    QString probeError;
    if (!exec(u"SELECT count(*) FROM sqlite_master"_s, {}, &probeError)) {
        if (probeError.contains(u"not a database"_s, Qt::CaseInsensitive))
            setError(error, u"The file is not a database of this station: "_s + path);
        else
            setError(error, u"The database cannot be read: "_s + path + u" ("_s + probeError + u')');
        return false;
    }
    if (mode != OpenMode::ReadOnly) {
        // WAL lets readers go on while the record import writes; it may be refused (read-only or
        // network folders), in which case the default journal is kept.
        exec(u"PRAGMA journal_mode=WAL"_s);
        // Passage records must survive a power cut once committed.
        exec(u"PRAGMA synchronous=FULL"_s);
    }
    exec(u"PRAGMA foreign_keys=OFF"_s);
    refuseQuotedLiterals();
    return true;
}

void Database::refuseQuotedLiterals()
{
#ifdef KX_HAVE_SQLITE3_API
    // SQLite reads a double-quoted name that matches no column as a text literal, which would
    // turn a misspelt column into a silent constant; PostgreSQL refuses it, so do the same here.
    const QVariant handle = m_db.driver()->handle();
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0) {
        if (auto* raw = *static_cast<sqlite3* const*>(handle.data())) {
            sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
            sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
        }
    }
#endif
}

bool Database::openServer(const DatabaseLocation& loc, OpenMode mode, QString* error)
{
    m_connectionName = nextConnectionName(m_nameHint.isEmpty() ? u"pg"_s : m_nameHint);
    m_db = QSqlDatabase::addDatabase(u"QPSQL"_s, m_connectionName);
    if (!m_db.isValid()) {
        setError(error, u"The PostgreSQL driver of Qt is not installed."_s);
        return false;
    }
    m_engine = Engine::PostgreSQL;
    m_db.setHostName(loc.host());
    m_db.setPort(loc.port());
    m_db.setDatabaseName(loc.databaseName());
    m_db.setUserName(loc.userName());
    m_db.setPassword(loc.password());
    m_db.setConnectOptions(loc.connectOptions());
    if (m_db.open()) {
        quietNotices();
        return true;
    }

    QString text = errorText(m_db.lastError());
    if (mode == OpenMode::CreateIfMissing && text.contains(u"does not exist"_s)) {
        QString createError;
        if (createServerDatabase(loc, &createError) && m_db.open()) {
            quietNotices();
            return true;
        }
        if (!createError.isEmpty())
            text = createError;
        else
            text = errorText(m_db.lastError());
    }
    setError(error, u"The database server cannot be reached: "_s + loc.displayText() + u" ("_s + text + u')');
    return false;
}

void Database::quietNotices()
{
    // "already exists, skipping" and the like are expected here and would only clutter stderr.
    exec(u"SET client_min_messages TO WARNING"_s);
}

bool Database::createServerDatabase(const DatabaseLocation& loc, QString* error)
{
    Database admin;
    QString openError;
    if (!admin.open(loc.withDatabaseName(u"postgres"_s).text(), OpenMode::ExistingOnly, &openError)) {
        setError(error, openError);
        return false;
    }
    // Names cannot be bound; the name comes from the configured address and is quoted.
    return admin.exec(u"CREATE DATABASE "_s + quoted(loc.databaseName()), {}, error);
}

void Database::close()
{
    release();
}

void Database::release()
{
    if (m_connectionName.isEmpty())
        return;
    if (m_db.isOpen()) {
        if (m_transactionDepth > 0)
            m_db.rollback();
        m_failedInTransaction.clear();
        m_db.close();
    }
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connectionName);
    m_connectionName.clear();
    m_location.clear();
    m_engine = Engine::None;
    m_transactionDepth = 0;
}

bool Database::isOpen() const
{
    return m_db.isValid() && m_db.isOpen();
}

Database Database::cloneForThread(const QString& name, QString* error) const
{
    Database copy;
    if (m_location.isEmpty()) {
        setError(error, u"The database is not open."_s);
        return copy;
    }
    // The name shows up in the connection name, which helps when reading driver warnings.
    copy.m_nameHint = name;
    copy.open(m_location, OpenMode::ExistingOnly, error);
    return copy;
}

QString Database::quoted(const QString& identifier)
{
    QString inner = identifier;
    inner.replace(u'"', u"\"\""_s);
    return u'"' + inner + u'"';
}

QString Database::quotedList(const QStringList& identifiers)
{
    QStringList parts;
    parts.reserve(identifiers.size());
    for (const QString& id : identifiers)
        parts << quoted(id);
    return parts.join(u", "_s);
}

QString Database::placeholders(qsizetype count)
{
    QString s;
    s.reserve(count * 2);
    for (qsizetype i = 0; i < count; ++i) {
        if (i)
            s += u',';
        s += u'?';
    }
    return s;
}

QVariant Database::normalized(const QVariant& value) const
{
    if (!value.isValid() || value.isNull())
        return QVariant();
    switch (value.metaType().id()) {
    case QMetaType::Bool:
        // Flags are 0/1 integers on both engines.
        return value.toBool() ? 1 : 0;
    case QMetaType::QDateTime:
        return toSql(value.toDateTime());
    case QMetaType::QDate:
        return toSql(QDateTime(value.toDate(), QTime(0, 0)));
    case QMetaType::QTime:
        return toSqlTime(value.toTime());
    default:
        return value;
    }
}

bool Database::prepareAndRun(QSqlQuery& q, const QString& sql, const QVariantList& params, QString* error) const
{
    m_lastUniqueViolation = false;
    if (!isOpen()) {
        setError(error, u"The database is not open."_s);
        return false;
    }
    q = QSqlQuery(m_db);
    q.setForwardOnly(true);
    bool ok = false;
    if (params.isEmpty()) {
        // Statements without values run directly: PostgreSQL cannot prepare DDL.
        ok = q.exec(sql);
    } else if (q.prepare(sql)) {
        for (const QVariant& p : params)
            q.addBindValue(normalized(p));
        ok = q.exec();
    }
    if (!ok) {
        m_lastUniqueViolation = isUniqueViolation(q.lastError());
        setError(error, errorText(q.lastError()));
        // A failed statement aborts a PostgreSQL transaction, and freeing the prepared statement
        // would fail until the rollback: keep it until then.
        if (isPostgreSQL() && m_transactionDepth > 0)
            m_failedInTransaction.append(q);
    }
    return ok;
}

bool Database::exec(const QString& sql, const QVariantList& params, QString* error) const
{
    QSqlQuery q;
    return prepareAndRun(q, sql, params, error);
}

int Database::execCount(const QString& sql, const QVariantList& params, QString* error) const
{
    QSqlQuery q;
    if (!prepareAndRun(q, sql, params, error))
        return -1;
    return q.numRowsAffected();
}

QSqlQuery Database::query(const QString& sql, const QVariantList& params, QString* error) const
{
    QSqlQuery q;
    prepareAndRun(q, sql, params, error);
    return q;
}

QVariant Database::scalar(const QString& sql, const QVariantList& params, QString* error) const
{
    QSqlQuery q;
    if (!prepareAndRun(q, sql, params, error) || !q.next())
        return QVariant();
    return q.value(0);
}

QList<QVariantList> Database::rows(const QString& sql, const QVariantList& params, QString* error) const
{
    QList<QVariantList> result;
    QSqlQuery q;
    if (!prepareAndRun(q, sql, params, error))
        return result;
    const int columns = q.record().count();
    while (q.next()) {
        QVariantList row;
        row.reserve(columns);
        for (int i = 0; i < columns; ++i)
            row << q.value(i);
        result << row;
    }
    return result;
}

bool Database::insert(const QString& table, const QStringList& columns, const QVariantList& values, QString* error,
                      qint64* newId, const QString& idColumn) const
{
    if (columns.size() != values.size()) {
        setError(error, u"Column and value counts differ."_s);
        return false;
    }
    QString sql = u"INSERT INTO "_s + quoted(table) + u" ("_s + quotedList(columns) + u") VALUES ("_s
        + placeholders(static_cast<int>(values.size())) + u')';
    const bool returning = newId && isPostgreSQL() && !idColumn.isEmpty();
    if (returning)
        sql += u" RETURNING "_s + quoted(idColumn);
    QSqlQuery q;
    if (!prepareAndRun(q, sql, values, error))
        return false;
    if (newId) {
        if (returning)
            *newId = q.next() ? q.value(0).toLongLong() : -1;
        else if (isPostgreSQL())
            *newId = scalar(u"SELECT lastval()"_s).toLongLong();
        else
            *newId = q.lastInsertId().toLongLong();
    }
    return true;
}

bool Database::insertRows(const QString& table, const QStringList& columns, const QList<QVariantList>& rows,
                          QString* error, QList<qint64>* newIds, const QString& idColumn) const
{
    if (newIds)
        newIds->clear();
    if (columns.isEmpty()) {
        setError(error, u"No columns given."_s);
        return false;
    }
    const int width = static_cast<int>(columns.size());
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (rows.at(i).size() != width) {
            setError(error, u"Row "_s + QString::number(i) + u" has the wrong number of values."_s);
            return false;
        }
    }
    const QString head = u"INSERT INTO "_s + quoted(table) + u" ("_s + quotedList(columns) + u") VALUES "_s;
    const QString tuple = u'(' + placeholders(width) + u')';
    if (isSQLite()) {
        // SQLite runs a prepared statement in-process: one row per execution is the fastest way.
        m_lastUniqueViolation = false;
        QSqlQuery q(m_db);
        if (!q.prepare(head + tuple)) {
            setError(error, errorText(q.lastError()));
            return false;
        }
        for (const QVariantList& row : rows) {
            for (int c = 0; c < width; ++c)
                q.bindValue(c, normalized(row.at(c)));
            if (!q.exec()) {
                m_lastUniqueViolation = isUniqueViolation(q.lastError());
                setError(error, errorText(q.lastError()));
                return false;
            }
            if (newIds)
                newIds->append(q.lastInsertId().toLongLong());
        }
        return true;
    }
    // Each execution is a round trip to the server: send many rows per statement, staying well
    // below the limit on values in one statement.
    const int chunk = qMax(1, qMin(500, 30000 / width));
    for (qsizetype start = 0; start < rows.size(); start += chunk) {
        const qsizetype count = qMin<qsizetype>(chunk, rows.size() - start);
        QString sql = head;
        QVariantList values;
        values.reserve(count * width);
        for (qsizetype i = 0; i < count; ++i) {
            if (i)
                sql += u',';
            sql += tuple;
            values += rows.at(start + i);
        }
        if (!newIds) {
            if (!exec(sql, values, error))
                return false;
            continue;
        }
        // The counter values come back in the order of the rows.
        QSqlQuery q = query(sql + u" RETURNING "_s + quoted(idColumn), values, error);
        if (!q.isActive())
            return false;
        while (q.next())
            newIds->append(q.value(0).toLongLong());
    }
    return true;
}

bool Database::upsert(const QString& table, const QStringList& keyColumns, const QStringList& columns,
                      const QVariantList& values, QString* error) const
{
    if (columns.size() != values.size() || keyColumns.isEmpty()) {
        setError(error, u"Upsert needs key columns and one value per column."_s);
        return false;
    }
    QStringList updates;
    for (const QString& c : columns) {
        if (!keyColumns.contains(c))
            updates << quoted(c) + u" = excluded."_s + quoted(c);
    }
    // The same text works on SQLite (3.24 and later) and PostgreSQL.
    const QString sql = u"INSERT INTO "_s + quoted(table) + u" ("_s + quotedList(columns) + u") VALUES ("_s
        + placeholders(static_cast<int>(values.size())) + u") ON CONFLICT ("_s + quotedList(keyColumns) + u") "_s
        + (updates.isEmpty() ? u"DO NOTHING"_s : u"DO UPDATE SET "_s + updates.join(u", "_s));
    return exec(sql, values, error);
}

bool Database::beginTransaction(QString* error)
{
    if (!isOpen()) {
        setError(error, u"The database is not open."_s);
        return false;
    }
    bool ok = false;
    if (m_transactionDepth == 0) {
        if (isSQLite()) {
            // Take the write lock at once: a reader upgraded to writer mid-way cannot wait for it.
            ok = exec(u"BEGIN IMMEDIATE"_s, {}, error);
        } else {
            ok = m_db.transaction();
            if (!ok)
                setError(error, errorText(m_db.lastError()));
        }
    } else {
        ok = exec(u"SAVEPOINT kx_sp_"_s + QString::number(m_transactionDepth), {}, error);
    }
    if (ok)
        ++m_transactionDepth;
    return ok;
}

bool Database::commit(QString* error)
{
    if (m_transactionDepth <= 0) {
        setError(error, u"No transaction is open."_s);
        return false;
    }
    if (m_transactionDepth > 1) {
        if (!exec(u"RELEASE SAVEPOINT kx_sp_"_s + QString::number(m_transactionDepth - 1), {}, error))
            return false;
        --m_transactionDepth;
        return true;
    }
    bool ok = false;
    if (isSQLite()) {
        ok = exec(u"COMMIT"_s, {}, error);
    } else {
        // The driver notices when the server turned the commit into a rollback.
        ok = m_db.commit();
        if (!ok)
            setError(error, errorText(m_db.lastError()));
    }
    if (!ok) {
        rollback();
        return false;
    }
    m_transactionDepth = 0;
    m_failedInTransaction.clear();
    return true;
}

bool Database::rollback(QString* error)
{
    if (m_transactionDepth <= 0) {
        setError(error, u"No transaction is open."_s);
        return false;
    }
    bool ok = false;
    if (m_transactionDepth > 1) {
        const QString sp = u"kx_sp_"_s + QString::number(m_transactionDepth - 1);
        ok = exec(u"ROLLBACK TO SAVEPOINT "_s + sp, {}, error) && exec(u"RELEASE SAVEPOINT "_s + sp, {}, error);
        --m_transactionDepth;
    } else {
        m_transactionDepth = 0;
        if (isSQLite()) {
            ok = exec(u"ROLLBACK"_s, {}, error);
        } else {
            ok = m_db.rollback();
            if (!ok)
                setError(error, errorText(m_db.lastError()));
        }
    }
    // The transaction is usable again: statements kept from its failure can be freed now.
    m_failedInTransaction.clear();
    return ok;
}

bool Database::tableExists(const QString& table) const
{
    if (isSQLite())
        return scalar(u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND lower(name) = lower(?)"_s, { table })
            .isValid();
    // The catalogue itself: the standard view costs tens of milliseconds on a busy server.
    return scalar(u"SELECT 1 FROM pg_catalog.pg_tables WHERE schemaname = current_schema() AND tablename = ?"_s,
                  { table })
        .isValid();
}

QStringList Database::columnNames(const QString& table) const
{
    const QString sql = isSQLite() ? u"SELECT name FROM pragma_table_info(?)"_s
                                   : u"SELECT column_name FROM information_schema.columns WHERE table_schema = "
                                     u"current_schema() AND table_name = ? ORDER BY ordinal_position"_s;
    QStringList names;
    for (const QVariantList& row : rows(sql, { table }))
        names << row.value(0).toString();
    return names;
}

bool Database::indexExists(const QString& index) const
{
    if (isSQLite())
        return scalar(u"SELECT 1 FROM sqlite_master WHERE type = 'index' AND name = ?"_s, { index }).isValid();
    return scalar(u"SELECT 1 FROM pg_indexes WHERE schemaname = current_schema() AND indexname = ?"_s, { index })
        .isValid();
}

QVariant Database::toSql(const QDateTime& value) const
{
    if (!value.isValid())
        return QVariant();
    // Text on both engines: PostgreSQL casts it to its timestamp column, with no time zone
    // arithmetic on the way.
    return dateTimeText(value);
}

QVariant Database::toSqlTime(const QTime& value) const
{
    if (!value.isValid())
        return QVariant();
    return toSql(QDateTime(timeBaseDate(), value));
}

QString Database::dateTimeText(const QDateTime& value)
{
    return value.toString(QLatin1String(kDateTimeFormat));
}

QDate Database::timeBaseDate()
{
    return QDate(1899, 12, 30);
}

QDateTime Database::dateTime(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QDateTime();
    switch (value.metaType().id()) {
    case QMetaType::QDateTime: {
        const QDateTime dt = value.toDateTime();
        // Keep the wall-clock reading, whole seconds, as the panels and reports know it.
        return QDateTime(dt.date(), QTime(dt.time().hour(), dt.time().minute(), dt.time().second()));
    }
    case QMetaType::QDate:
        return QDateTime(value.toDate(), QTime(0, 0));
    default:
        break;
    }
    const QString text = value.toString().trimmed();
    QDateTime dt = QDateTime::fromString(text, QLatin1String(kDateTimeFormat));
    if (!dt.isValid())
        dt = QDateTime::fromString(text.left(19), Qt::ISODate);
    if (!dt.isValid()) {
        const QDate d = QDate::fromString(text, u"yyyy-MM-dd"_s);
        if (d.isValid())
            dt = QDateTime(d, QTime(0, 0));
    }
    return dt;
}

bool Database::isUniqueViolation(const QSqlError& error)
{
    const QString code = error.nativeErrorCode();
    if (code == u"23505"_s)
        return true; // PostgreSQL unique_violation
    if (code == u"2067"_s || code == u"1555"_s)
        return true; // SQLite extended codes for UNIQUE and PRIMARY KEY
    const QString text = error.databaseText();
    return text.contains(u"UNIQUE constraint failed"_s) || text.contains(u"duplicate key value"_s);
}
