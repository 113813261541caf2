#include "store/LanguageDatabase.h"

#include "store/Translator.h"

#include <QAtomicInt>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <filesystem>

namespace {

// One short-lived SQLite connection with a unique name, removed again on scope exit.
class Connection
{
public:
    explicit Connection(const QString& path, bool readOnly)
        : m_name(QStringLiteral("kx_language_%1").arg(s_counter.fetchAndAddRelaxed(1)))
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(path);
        if (readOnly)
            db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        m_open = db.open();
        if (!m_open)
            m_error = db.lastError().text();
    }
    ~Connection()
    {
        {
            QSqlDatabase db = QSqlDatabase::database(m_name, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_name);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool isOpen() const { return m_open; }
    QString error() const { return m_error; }
    QSqlDatabase db() const { return QSqlDatabase::database(m_name, false); }

private:
    static inline QAtomicInt s_counter;
    QString m_name;
    bool m_open = false;
    QString m_error;
};

bool fail(QString* error, const QString& text)
{
    if (error)
        *error = text;
    return false;
}

bool run(QSqlQuery& q, const QString& sql, QString* error)
{
    if (q.exec(sql))
        return true;
    return fail(error, q.lastError().text());
}

bool readFile(const QString& path, QByteArray* bytes, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
    *bytes = file.readAll();
    return true;
}

bool writeDatabase(const QString& path, const QList<LanguageDatabase::Row>& rows, const QByteArray& sum, QString* error)
{
    Connection c(path, false);
    if (!c.isOpen())
        return fail(error, c.error());
    QSqlDatabase db = c.db();
    if (!db.transaction())
        return fail(error, db.lastError().text());
    {
        QSqlQuery q(db);
        if (!run(q, QStringLiteral("CREATE TABLE ChLS (BaseTR TEXT, BaseEN TEXT, BaseAR TEXT)"), error)
            || !run(q, QStringLiteral("CREATE INDEX ChLS_BaseTR ON ChLS (BaseTR)"), error)
            || !run(q, QStringLiteral("CREATE TABLE ChLSSource (Checksum TEXT)"), error))
            return false;
        if (!q.prepare(QStringLiteral("INSERT INTO ChLSSource (Checksum) VALUES (?)")))
            return fail(error, q.lastError().text());
        q.addBindValue(QString::fromLatin1(sum));
        if (!q.exec())
            return fail(error, q.lastError().text());
        if (!q.prepare(QStringLiteral("INSERT INTO ChLS (BaseTR, BaseEN, BaseAR) VALUES (?, ?, ?)")))
            return fail(error, q.lastError().text());
        for (const LanguageDatabase::Row& row : rows) {
            q.addBindValue(row.turkish);
            q.addBindValue(row.english);
            q.addBindValue(row.arabic);
            if (!q.exec())
                return fail(error, q.lastError().text());
        }
    }
    if (!db.commit())
        return fail(error, db.lastError().text());
    return true;
}

} // namespace

QString LanguageDatabase::shippedTablePath()
{
    return QStringLiteral(":/i18n/texts.tsv");
}

QByteArray LanguageDatabase::checksum(const QByteArray& tsv)
{
    return QCryptographicHash::hash(tsv, QCryptographicHash::Sha256).toHex();
}

bool LanguageDatabase::parseTable(const QByteArray& tsv, QList<Row>* rows, QString* error)
{
    rows->clear();
    const QList<QByteArray> lines = tsv.split('\n');
    // The first line names the columns.
    for (qsizetype i = 1; i < lines.size(); ++i) {
        QByteArray line = lines.at(i);
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.isEmpty())
            continue;
        const QStringList fields = QString::fromUtf8(line).split(u'\t');
        if (fields.size() < 3) {
            rows->clear();
            return fail(
                error,
                QStringLiteral("line %1 of the text table has %2 columns instead of 3").arg(i + 1).arg(fields.size()));
        }
        rows->append({ fields.at(0), fields.at(1), fields.at(2) });
    }
    return true;
}

bool LanguageDatabase::readTable(const QString& tsvPath, QList<Row>* rows, QString* error)
{
    QByteArray bytes;
    return readFile(tsvPath, &bytes, error) && parseTable(bytes, rows, error);
}

bool LanguageDatabase::build(const QString& dbPath, const QString& tsvPath, QString* error)
{
    QByteArray bytes;
    QList<Row> rows;
    if (!readFile(tsvPath, &bytes, error) || !parseTable(bytes, &rows, error))
        return false;
    // Build beside the target and swap it in whole, so a failed build leaves the old file.
    const QString temp = dbPath + u".building";
    QFile::remove(temp);
    if (!writeDatabase(temp, rows, checksum(bytes), error)) {
        QFile::remove(temp);
        return false;
    }
    std::error_code ec;
    std::filesystem::rename(std::filesystem::path(temp.toStdU16String()),
                            std::filesystem::path(dbPath.toStdU16String()), ec);
    if (ec) {
        QFile::remove(temp);
        return fail(error, QStringLiteral("cannot replace %1: %2").arg(dbPath, QString::fromLocal8Bit(ec.message())));
    }
    return true;
}

bool LanguageDatabase::ensureCurrent(const QString& dbPath, const QString& tsvPath, QString* error)
{
    const QFileInfo info(dbPath);
    if (!info.exists() || (info.isFile() && info.size() == 0))
        return build(dbPath, tsvPath, error);

    QByteArray bytes;
    if (!readFile(tsvPath, &bytes, error))
        return false;
    bool rebuild = false;
    {
        Connection c(dbPath, true);
        if (!c.isOpen())
            return fail(error, c.error());
        QSqlQuery q(c.db());
        // A file that is not a database fails here; it is reported, not overwritten.
        if (!run(q, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"), error))
            return false;
        QStringList tables;
        while (q.next())
            tables.append(q.value(0).toString());
        if (tables.contains(QStringLiteral("ChLSSource"))) {
            if (!run(q, QStringLiteral("SELECT Checksum FROM ChLSSource"), error))
                return false;
            rebuild = !q.next() || q.value(0).toString().toLatin1() != checksum(bytes);
        } else {
            // A language table put there by hand is kept as it is; anything else is ours to fill.
            rebuild = !tables.contains(QStringLiteral("ChLS"));
        }
    }
    return rebuild ? build(dbPath, tsvPath, error) : true;
}

bool LanguageDatabase::load(const QString& dbPath, Translator& translator, QString* error)
{
    if (!QFileInfo(dbPath).isFile())
        return fail(error, QStringLiteral("the language database %1 is missing").arg(dbPath));
    Connection c(dbPath, true);
    if (!c.isOpen())
        return fail(error, c.error());
    QSqlQuery q(c.db());
    q.setForwardOnly(true);
    if (!run(q, QStringLiteral("SELECT BaseTR, BaseEN, BaseAR FROM ChLS"), error))
        return false;
    translator.clear();
    while (q.next())
        translator.addRow(q.value(0).toString(), q.value(1).toString(), q.value(2).toString());
    return true;
}
