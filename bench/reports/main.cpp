// Reports over many passage records: time to the first screen of rows, the full count and the
// full .xlsx export, each beside the bare statement run by the engine's own command-line client
// (sqlite3, psql) writing its rows to a file as CSV, in the same run. "Who is inside now" is also
// read from the whole history, the way it was before the whereabouts were kept, and the plan of
// one person's page is shown on PostgreSQL. SQLite always; PostgreSQL when KX_TEST_PG_URL is set.
//
//   bench_reports [--rows N] [--engines sqlite,postgresql] [--no-xlsx] [--only access]... [--keep FILE]
//
// --only PREFIX runs the reports whose name starts with it; give it more than once for several.
//
// The default of 1,000,000 records finishes in a few minutes; --rows 10000000 for the large run.

#include "protocol/ProcessTimeZone.h"
#include "reports/ReportBuilder.h"
#include "reports/ReportCatalogue.h"
#include "reports/ReportConnections.h"
#include "reports/ReportExport.h"
#include "reports/ReportRowSource.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "store/DatabaseLocation.h"
#include "store/Transaction.h"
#include "store/Whereabouts.h"
#include "support/TestDatabases.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QTextStream& out()
{
    static QTextStream s(stdout);
    return s;
}

const QDateTime kStart(QDate(2024, 1, 1), QTime(0, 0));

// Records spread evenly over one year, 20000 persons, four panels of four doors, one record in
// ten denied and one in fifty a door operation. Made by the database itself from a number series.
bool generate(Database& db, qint64 rows, QString* error)
{
    const qint64 step = qMax<qint64>(1, 365LL * 86400 / rows);
    Transaction tx(db);
    const QString values
        = u"SELECT 1 + i % 4, 1 + (i / 4) % 4, 1 + i % 2, CASE WHEN i % 50 = 1 THEN 5 + i % 6 ELSE 1 + i % 20000 END,"
          u" 100000 + i % 20000, %1, i % 2, CASE WHEN i % 50 = 1 THEN 5 + i % 6 WHEN i % 10 = 0 THEN 0 ELSE 1 END,"
          u" 0, 0"_s;
    const QString columns = u"INSERT INTO \"AccessDatas\" (\"Panel ID\", \"Kapi ID\", \"Global Bolge No\", \"ID\","
                            u" \"Kart ID\", \"Tarih\", \"Gecis Tipi\", \"Kod\", \"Kullanici Tipi\", \"Visitor No\") "_s;
    bool ok;
    if (db.isPostgreSQL()) {
        ok = db.exec(columns + values.arg(u"CAST(? AS timestamp) + (i * ?) * interval '1 second'"_s)
                         + u" FROM generate_series(1, ?) AS s(i)"_s,
                     { db.toSql(kStart), step, rows }, error)
            && db.exec(
                u"INSERT INTO \"Users\" (\"ID\", \"Kart ID\", \"Adi\", \"Soyadi\", \"Kullanici Tipi\","
                u" \"Grup No\", \"Sirket No\", \"Departman No\") SELECT i, 100000 + i, 'Ad ' || i, 'Soyad ' || i,"
                u" 0, 1 + i % 5, 1 + i % 3, 1 + i % 7 FROM generate_series(1, 20000) AS s(i)"_s,
                {}, error);
    } else {
        ok = db.exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "_s + columns
                         + values.arg(u"datetime(?, '+' || (i * ?) || ' seconds')"_s) + u" FROM n"_s,
                     { rows, db.toSql(kStart), step }, error)
            && db.exec(
                u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
                u"INSERT INTO \"Users\" (\"ID\", \"Kart ID\", \"Adi\", \"Soyadi\", \"Kullanici Tipi\","
                u" \"Grup No\", \"Sirket No\", \"Departman No\") SELECT i, 100000 + i, 'Ad ' || i, 'Soyad ' || i,"
                u" 0, 1 + i % 5, 1 + i % 3, 1 + i % 7 FROM n"_s,
                {}, error);
    }
    ok = ok
        && db.exec(u"INSERT INTO \"PanelSettings\" (\"Panel ID\", \"Sira No\", \"Seri No\", \"Panel Global Bolge1\","
                   u" \"Panel Global Bolge2\", \"Kapi3 Lokal Bolge\", \"Kapi4 Lokal Bolge\") VALUES"
                   u" (1, 1, 1, 1, 2, 2, 2), (2, 2, 2, 1, 2, 2, 2), (3, 3, 3, 1, 2, 2, 2), (4, 4, 4, 1, 2, 2, 2)"_s,
                   {}, error)
        && db.exec(
            u"INSERT INTO \"GlobalZones\" (\"Global Bolge No\", \"Global Bolge Adi\") VALUES (1, 'A'), (2, 'B')"_s, {},
            error);
    if (!ok || !tx.commit(error))
        return false;
    return db.exec(db.isPostgreSQL() ? u"ANALYZE"_s : u"ANALYZE"_s, {}, error);
}

// The statement as the engine's own client runs it: the values bound through its own means
// (sqlite3 parameters, psql variables), every row written to `output` as CSV.
qint64 clientRun(const Database& db, const QString& sql, const QVariantList& params, const QString& output,
                 QString* error)
{
    QStringList setup;
    int n = 0;
    QStringList psqlVars;
    const QRegularExpression mark(u"\\?"_s);
    QString text;
    qsizetype last = 0;
    for (auto it = mark.globalMatch(sql); it.hasNext();) {
        const auto m = it.next();
        text += sql.mid(last, m.capturedStart() - last);
        last = m.capturedEnd();
        const QVariant v = params.value(n++);
        const bool number = v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong;
        const QString literal = number ? v.toString() : u'\'' + v.toString().replace(u"'"_s, u"''"_s) + u'\'';
        if (db.isPostgreSQL()) {
            psqlVars << u"-v"_s << u"p"_s + QString::number(n) + u'=' + v.toString();
            text += number ? QString(u":p"_s + QString::number(n)) : QString(u":'p"_s + QString::number(n) + u'\'');
        } else {
            setup << u".parameter set ?"_s + QString::number(n) + u' ' + literal;
            text += u'?' + QString::number(n);
        }
    }
    text += sql.mid(last);
    QProcess p;
    p.setStandardOutputFile(output);
    QElapsedTimer timer;
    if (db.isPostgreSQL()) {
        const DatabaseLocation loc = DatabaseLocation::parse(db.location());
        QStringList args = {
            u"-X"_s, u"-q"_s,        u"--csv"_s, u"-h"_s,           loc.host(), u"-p"_s, QString::number(loc.port()),
            u"-U"_s, loc.userName(), u"-d"_s,    loc.databaseName()
        };
        args += psqlVars;
        p.start(u"psql"_s, args);
        timer.start();
        p.write((text + u";\n"_s).toUtf8());
    } else {
        p.start(u"sqlite3"_s, { u"-csv"_s, db.location() });
        timer.start();
        p.write((setup.join(u'\n') + u'\n' + text + u";\n"_s).toUtf8());
    }
    p.closeWriteChannel();
    if (!p.waitForFinished(-1) || p.exitCode() != 0) {
        *error = QString::fromUtf8(p.readAllStandardError());
        return -1;
    }
    const QByteArray err = p.readAllStandardError();
    if (!err.isEmpty()) {
        *error = QString::fromUtf8(err);
        return -1;
    }
    return timer.elapsed();
}

qint64 bareClient(const Database& db, const ReportStatement& st, const QString& output, QString* error)
{
    return clientRun(db, st.sql, st.params, output, error);
}

// The engine's plan of a statement, run by its own client (PostgreSQL cannot prepare EXPLAIN).
QString plan(const Database& db, const QString& sql, const QVariantList& params, const QString& output,
             bool analyze = false)
{
    QString error;
    const QString explain
        = db.isPostgreSQL() ? (analyze ? u"EXPLAIN ANALYZE "_s : u"EXPLAIN "_s) : u"EXPLAIN QUERY PLAN "_s;
    if (clientRun(db, explain + sql, params, output, &error) < 0)
        return error;
    QFile file(output);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.trimmed();
    return lines.join(u" | "_s);
}

struct Case
{
    QString name;
    ReportKind kind;
    ReportFilter filter;
    bool xlsx;
};

// A date range holding every generated record: "who is inside now" then reads the history.
ReportFilter wholeHistory()
{
    ReportFilter f;
    f.allDates = false;
    f.twoDates = true;
    f.dateStart = QDate(2000, 1, 1);
    f.dateEnd = QDate(2099, 12, 31);
    return f;
}

// The plan of the first page of one person's passages: which index the engine walks.
void showPersonPlan(const Database& db, const QString& output)
{
    ReportFilter person;
    person.person = 777;
    const ReportStatement st = ReportBuilder::build(db, ReportKind::Access, person);
    const QStringList statements{ u"SELECT a.\"Tarih\""_s + st.pageFrom
                                      + u" ORDER BY a.\"Tarih\" DESC LIMIT 1 OFFSET 99"_s,
                                  st.pageSelect + st.pageFrom + st.pageOrder };
    for (const QString& sql : statements) {
        const QString text = plan(db, sql, st.pageParams, output);
        out() << "  person page plan " << (text.contains(u"AccessDatas_ID_Tarih"_s) ? "uses" : "does NOT use")
              << " the person's index: " << text.left(400) << Qt::endl;
    }
}

QList<Case> cases(bool xlsx)
{
    ReportFilter all;
    ReportFilter month;
    month.allDates = false;
    month.twoDates = true;
    month.dateStart = QDate(2024, 6, 1);
    month.dateEnd = QDate(2024, 6, 30);
    ReportFilter denied = month;
    denied.result = ReportFilter::Result::Denied;
    denied.zone = 2;
    ReportFilter day;
    day.day = QDate(2024, 6, 14);
    ReportFilter person = all;
    person.person = 777;
    return { { u"access, all dates"_s, ReportKind::Access, all, xlsx },
             { u"access, one month"_s, ReportKind::Access, month, xlsx },
             { u"access, denied in zone"_s, ReportKind::Access, denied, xlsx },
             { u"access, one person"_s, ReportKind::Access, person, xlsx },
             { u"door operations, all"_s, ReportKind::DoorOperations, all, xlsx },
             { u"came"_s, ReportKind::Came, day, xlsx },
             { u"not came"_s, ReportKind::NotCome, day, xlsx },
             { u"first in / last out"_s, ReportKind::FirstInLastOut, day, xlsx },
             { u"in/out now"_s, ReportKind::InOut, all, xlsx },
             { u"in/out now, history"_s, ReportKind::InOut, wholeHistory(), xlsx },
             { u"monthly"_s, ReportKind::Monthly, day, xlsx } };
}

QString ms(qint64 v)
{
    return v < 0 ? u"-"_s : QString::number(v);
}

QString ratio(qint64 a, qint64 b)
{
    if (a < 0 || b <= 0)
        return u"-"_s;
    return QString::number(double(a) / double(b), 'f', 2);
}

bool runEngine(TestDatabases::Engine engine, qint64 rows, bool xlsx, const QStringList& only, const QString& keep,
               TestDatabases& dbs)
{
    Database db;
    QString error;
    if (!dbs.openFresh(engine, db, true, &error)) {
        out() << "cannot open: " << error << Qt::endl;
        return false;
    }
    QElapsedTimer timer;
    timer.start();
    if (!generate(db, rows, &error)) {
        out() << "cannot generate: " << error << Qt::endl;
        return false;
    }
    out() << "\n"
          << (engine == TestDatabases::SQLite ? "SQLite" : "PostgreSQL") << ", " << rows << " records generated in "
          << timer.elapsed() << " ms\n";
    // As the upgrade does once for a database from before the whereabouts were kept.
    timer.restart();
    const qint64 made = Whereabouts::rebuild(db, &error);
    out() << "whereabouts made from the history: " << made << " rows in " << timer.elapsed() << " ms" << Qt::endl;
    QTemporaryDir dir;
    if (db.isPostgreSQL())
        showPersonPlan(db, dir.filePath(u"plan.txt"_s));
    // --keep FILE: a copy of the generated SQLite database, to look at with sqlite3.
    if (db.isSQLite() && !keep.isEmpty() && !db.exec(u"VACUUM INTO ?"_s, { keep }, &error))
        out() << "cannot keep a copy: " << error << Qt::endl;
    out() << u"%1 %2 %3 %4 %5 %6 %7 %8 %9"_s.arg(u"report"_s, -24)
                 .arg(u"rows"_s, 9)
                 .arg(u"bare ms"_s, 8)
                 .arg(u"screen ms"_s, 9)
                 .arg(u"count ms"_s, 9)
                 .arg(u"xlsx ms"_s, 9)
                 .arg(u"scr/bare"_s, 9)
                 .arg(u"cnt/bare"_s, 9)
                 .arg(u"xlsx/bare"_s, 9)
          << Qt::endl;
    for (const Case& c : cases(xlsx)) {
        if (!only.isEmpty() && std::none_of(only.begin(), only.end(), [&c](const QString& prefix) {
                return c.name.startsWith(prefix);
            }))
            continue;
        const ReportStatement st = ReportBuilder::build(db, c.kind, c.filter);
        if (c.kind == ReportKind::InOut && c.filter.allDates)
            out() << "  first page plan: "
                  << plan(db,
                          st.pageSelect + u", t.\"Global Bolge No\", t.\"ID\""_s + st.pageFrom
                              + u" ORDER BY t.\"Global Bolge No\", t.\"ID\" LIMIT 100"_s,
                          st.pageParams, dir.filePath(u"plan.txt"_s), true)
                         .left(3000)
                  << Qt::endl;
        QString bareError;
        const qint64 bare = bareClient(db, st, dir.filePath(u"bare.csv"_s), &bareError);
        if (bare < 0)
            out() << "  (bare statement failed: " << bareError.trimmed() << ")\n";

        // The first screen as a window shows it, once on a new connection and once on the one
        // kept from the report before (what every report after the station's first one gets).
        qint64 screenMs = -1;
        for (const bool kept : { false, true }) {
            if (!kept)
                ReportConnections::closeAll();
            timer.restart();
            ReportRowSource source;
            const ReportStatement built = ReportBuilder::build(db, c.kind, c.filter);
            const qint64 builtMs = timer.elapsed();
            source.open(db, built);
            const qint64 openedMs = timer.elapsed();
            const int screen = int(source.fetch(100).size());
            screenMs = timer.elapsed();
            source.close();
            Q_UNUSED(screen);
            if (c.kind == ReportKind::InOut || c.filter.person > 0)
                out() << "  first screen, " << (kept ? "kept" : "new") << " connection: statement built " << builtMs
                      << " ms, source open " << openedMs << " ms, rows read " << screenMs << " ms" << Qt::endl;
        }

        timer.restart();
        const qint64 count = ReportRowSource::count(db, st);
        const qint64 countMs = timer.elapsed();

        qint64 xlsxMs = -1;
        if (c.xlsx) {
            timer.restart();
            const ReportExport::Outcome o = ReportExport::run(db, c.kind, c.filter, ReportExport::Format::Xlsx,
                                                              dir.filePath(u"r.xlsx"_s), Clock::system().now());
            xlsxMs = o.ok ? timer.elapsed() : -1;
            if (!o.ok)
                out() << "  (xlsx failed: " << o.error << ")\n";
        }
        out() << u"%1 %2 %3 %4 %5 %6 %7 %8 %9"_s.arg(c.name, -24)
                     .arg(count, 9)
                     .arg(ms(bare), 8)
                     .arg(ms(screenMs), 9)
                     .arg(ms(countMs), 9)
                     .arg(ms(xlsxMs), 9)
                     .arg(ratio(screenMs, bare), 9)
                     .arg(ratio(countMs, bare), 9)
                     .arg(ratio(xlsxMs, bare), 9)
              << Qt::endl;
    }
    db.close();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    // As the station does at start: local date-times without a zone file check each.
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    qint64 rows = 1000000;
    QStringList engines = { u"sqlite"_s, u"postgresql"_s };
    bool xlsx = true;
    QStringList only;
    QString keep;
    for (int i = 1; i < args.size(); ++i) {
        if (args.at(i) == u"--rows"_s && i + 1 < args.size())
            rows = args.at(++i).toLongLong();
        else if (args.at(i) == u"--engines"_s && i + 1 < args.size())
            engines = args.at(++i).split(u',');
        else if (args.at(i) == u"--no-xlsx"_s)
            xlsx = false;
        else if (args.at(i) == u"--only"_s && i + 1 < args.size())
            only << args.at(++i);
        else if (args.at(i) == u"--keep"_s && i + 1 < args.size())
            keep = args.at(++i);
        else {
            out() << "usage: bench_reports [--rows N] [--engines sqlite,postgresql] [--no-xlsx] [--only prefix]"
                     " [--keep sqlite-copy]"
                  << Qt::endl;
            return 2;
        }
    }
    out() << "Reports over " << rows << " passage records. bare = the whole statement in the engine's own client\n"
          << "(rows written to a file as CSV); screen = the first 100 rows through the row source; count = the full "
             "count;\n"
          << "xlsx = the whole report written as a spreadsheet. Ratios are against bare." << Qt::endl;
    TestDatabases dbs;
    if (engines.contains(u"sqlite"_s))
        runEngine(TestDatabases::SQLite, rows, xlsx, only, keep, dbs);
    if (engines.contains(u"postgresql"_s)) {
        if (TestDatabases::available(TestDatabases::PostgreSQL))
            runEngine(TestDatabases::PostgreSQL, rows, xlsx, only, keep, dbs);
        else
            out() << "\nPostgreSQL skipped: " << TestDatabases::skipReason() << Qt::endl;
    }
    return 0;
}
