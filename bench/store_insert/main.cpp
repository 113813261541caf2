// Storing passage records in bulk: multi-row inserts against one prepared statement run per row
// (the baseline), both in one transaction, on SQLite and, when KX_TEST_PG_URL is set, PostgreSQL.

#include "store/Database.h"
#include "store/Transaction.h"
#include "support/TestDatabases.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

const QStringList kColumns
    = { u"Panel ID"_s, u"Kapi ID"_s, u"ID"_s, u"Kart ID"_s, u"Tarih"_s, u"Gecis Tipi"_s, u"Kod"_s };

QList<QVariantList> makeRows(int count, int offset)
{
    QList<QVariantList> rows;
    rows.reserve(count);
    const QDateTime start(QDate(2024, 1, 1), QTime(0, 0));
    for (int i = 0; i < count; ++i) {
        const int n = offset + i;
        rows << QVariantList{ 1 + n % 64, 1 + n % 4, 1 + n % 20000, 1000000 + n, start.addSecs(n), n % 2, 1 };
    }
    return rows;
}

qint64 perRow(Database& db, const QList<QVariantList>& rows)
{
    QElapsedTimer timer;
    timer.start();
    Transaction tx(db);
    QString placeholders = u"?"_s;
    for (qsizetype i = 1; i < kColumns.size(); ++i)
        placeholders += u",?"_s;
    {
        QSqlQuery q(db.connection());
        q.prepare(u"INSERT INTO \"AccessDatas\" ("_s + Database::quotedList(kColumns) + u") VALUES ("_s + placeholders
                  + u')');
        for (const QVariantList& row : rows) {
            for (int c = 0; c < row.size(); ++c)
                q.bindValue(c, c == 4 ? db.toSql(row.at(c).toDateTime()) : row.at(c));
            if (!q.exec())
                return -1;
        }
    }
    if (!tx.commit())
        return -1;
    return timer.nsecsElapsed();
}

qint64 bulk(Database& db, const QList<QVariantList>& rows)
{
    QElapsedTimer timer;
    timer.start();
    Transaction tx(db);
    if (!db.insertRows(u"AccessDatas"_s, kColumns, rows) || !tx.commit())
        return -1;
    return timer.nsecsElapsed();
}

void run(QTextStream& out, TestDatabases& dbs, TestDatabases::Engine engine, int count)
{
    Database db;
    QString error;
    if (!dbs.openFresh(engine, db, true, &error)) {
        out << "cannot open: " << error << Qt::endl;
        return;
    }
    const char* name = engine == TestDatabases::SQLite ? "SQLite" : "PostgreSQL";
    const qint64 base = perRow(db, makeRows(count, 0));
    const qint64 fast = bulk(db, makeRows(count, count));
    if (base <= 0 || fast <= 0) {
        out << name << ": insert failed" << Qt::endl;
        return;
    }
    const auto rate = [count](qint64 ns) { return qRound64(count / (ns / 1e9)); };
    out << name << ": " << count << " records; per-row prepared " << rate(base) << " rows/s, multi-row " << rate(fast)
        << " rows/s, ratio " << QString::number(double(base) / double(fast), 'f', 2) << "x" << Qt::endl;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    const int count = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 20000;
    TestDatabases dbs;
    run(out, dbs, TestDatabases::SQLite, count);
    if (TestDatabases::available(TestDatabases::PostgreSQL))
        run(out, dbs, TestDatabases::PostgreSQL, count);
    else
        out << "PostgreSQL: skipped (KX_TEST_PG_URL not set)" << Qt::endl;
    return 0;
}
