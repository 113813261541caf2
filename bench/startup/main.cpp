// The station's start, from main() to its main window shown with its pages, over a database
// holding many passages, beside the same start over a database holding none (the baseline),
// each start a process of its own on the offscreen platform. SQLite always; PostgreSQL when
// KX_TEST_PG_URL is set.
//
//   bench_startup [--rows N] [--runs R] [--engines sqlite,postgresql]
//
// With KX_BENCH_EAGER_PAGES=1 in the environment every page of the window is made before it is
// shown, as the station did before its pages were made on first showing (for a comparison).

#include "operations/station/Station.h"
#include "protocol/ProcessTimeZone.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "store/StartupOptions.h"
#include "store/StartupSequence.h"
#include "store/StartupUi.h"
#include "store/Transaction.h"
#include "store/Whereabouts.h"
#include "support/TestDatabases.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/MainPages.h"
#include "ui/main/frmMain.h"
#include "ui/schedule/MainSchedule.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <QTextStream>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QTextStream& out()
{
    static QTextStream s(stdout);
    return s;
}

// Answers the start as a first-time server operator would, without windows.
class QuietStartupUi : public StartupUi
{
public:
    bool askInitialSettings(StationSettings& settings) override
    {
        return settings.applyStartChoices(true, QString(), {}, 0).isEmpty();
    }
    bool chooseAdminPassword(const Message&, QString* password, QString* repeated) override
    {
        *password = *repeated = u"1234"_s;
        return true;
    }
    void showMessage(const Message& message) override { out() << "message: " << message.turkish() << Qt::endl; }
};

// What main() of the station does up to its window, in this process; prints the milliseconds.
int child(int argc, char** argv)
{
    QElapsedTimer timer;
    timer.start();
    ProcessTimeZone::settle();
    QApplication app(argc, argv);
    QuietStartupUi ui;
    StartupOptions options = StartupOptions::fromArguments(QApplication::arguments());
    options.singleInstance = false;
    StartupSequence sequence(ui, options);
    const StartupResult start = sequence.run();
    if (!start.ok)
        return 1;
    const qint64 startedMs = timer.elapsed();
    LanguageSwitch::apply(start.settings.language);
    int shownMs = 0;
    {
        Station station(start, Clock::system());
        QString loadError;
        if (!station.load(&loadError))
            qWarning().noquote() << loadError;
        const qint64 loadedMs = timer.elapsed();
        frmMain window(station);
        const qint64 windowMs = timer.elapsed();
        MainPages* pages = MainPages::install(window);
        if (qEnvironmentVariableIntValue("KX_BENCH_EAGER_PAGES") != 0)
            pages->buildAllPages();
        const qint64 pagesMs = timer.elapsed();
        MainSchedule::install(window, *pages, station.clock());
        const qint64 scheduleMs = timer.elapsed();
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            return 1;
        const qint64 exposedMs = timer.elapsed();
        // Whatever the pages queued for their first showing runs before the window counts as up.
        QCoreApplication::processEvents();
        shownMs = int(timer.elapsed());
        out() << "steps: start-up sequence " << startedMs << " ms, station loaded " << loadedMs << " ms, window "
              << windowMs << " ms, pages " << pagesMs << " ms, schedule " << scheduleMs << " ms, exposed " << exposedMs
              << " ms\n";
        out() << "shown " << shownMs << Qt::endl;
    }
    return 0;
}

const QDateTime kStart(QDate(2024, 1, 1), QTime(0, 0));

// Passages spread over one year for 20000 persons, made by the database itself.
bool fill(Database& db, qint64 rows, QString* error)
{
    if (rows <= 0)
        return true;
    const qint64 step = qMax<qint64>(1, 365LL * 86400 / rows);
    Transaction tx(db);
    const QString values = u"SELECT 1 + i % 4, 1 + (i / 4) % 4, 1 + i % 2, 1 + i % 20000, 100000 + i % 20000, %1,"
                           u" i % 2, CASE WHEN i % 10 = 0 THEN 0 ELSE 1 END, 0, 0"_s;
    const QString columns = u"INSERT INTO \"AccessDatas\" (\"Panel ID\", \"Kapi ID\", \"Global Bolge No\", \"ID\","
                            u" \"Kart ID\", \"Tarih\", \"Gecis Tipi\", \"Kod\", \"Kullanici Tipi\", \"Visitor No\") "_s;
    bool ok;
    if (db.isPostgreSQL())
        ok = db.exec(columns + values.arg(u"CAST(? AS timestamp) + (i * ?) * interval '1 second'"_s)
                         + u" FROM generate_series(1, ?) AS s(i)"_s,
                     { db.toSql(kStart), step, rows }, error);
    else
        ok = db.exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "_s + columns
                         + values.arg(u"datetime(?, '+' || (i * ?) || ' seconds')"_s) + u" FROM n"_s,
                     { rows, db.toSql(kStart), step }, error);
    if (!ok || Whereabouts::rebuild(db, error) < 0 || !tx.commit(error))
        return false;
    return db.exec(u"ANALYZE"_s, {}, error);
}

// A data folder and database that have been started once, with `rows` passages stored.
bool prepare(TestDatabases& dbs, TestDatabases::Engine engine, qint64 rows, const QString& dataDir, QString* location,
             QString* error)
{
    {
        Database db;
        if (!dbs.openFresh(engine, db, true, error))
            return false;
        *location = db.location();
        if (!fill(db, rows, error))
            return false;
    }
    QuietStartupUi ui;
    StartupOptions options;
    options.dataDir = dataDir;
    options.databaseOverride = *location;
    options.singleInstance = false;
    StartupSequence first(ui, options);
    if (!first.run().ok) {
        *error = u"the first start failed"_s;
        return false;
    }
    return true;
}

struct Timing
{
    qint64 shown = -1; // main() to the window, as the child measured it
    qint64 process = -1; // the child process from its start to its end
    QString steps; // where the time went, as the child told it
};

Timing startOnce(const QString& dataDir, const QString& location)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    p.setProcessEnvironment(env);
    QElapsedTimer timer;
    timer.start();
    p.start(QCoreApplication::applicationFilePath(), { u"--child"_s, u"--data-dir"_s, dataDir, u"--db"_s, location });
    Timing t;
    if (!p.waitForFinished(-1) || p.exitCode() != 0) {
        out() << "  start failed: " << p.readAllStandardError() << Qt::endl;
        return t;
    }
    t.process = timer.elapsed();
    const QByteArray text = p.readAllStandardOutput();
    const qsizetype at = text.indexOf("shown ");
    if (at >= 0)
        t.shown = text.mid(at + 6).trimmed().toLongLong();
    const qsizetype steps = text.indexOf("steps: ");
    if (steps >= 0)
        t.steps = QString::fromUtf8(text.mid(steps, text.indexOf('\n', steps) - steps));
    return t;
}

qint64 median(QList<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? -1 : values.at(values.size() / 2);
}

void runEngine(TestDatabases::Engine engine, qint64 rows, int runs, TestDatabases& dbs)
{
    const QString name = engine == TestDatabases::SQLite ? u"SQLite"_s : u"PostgreSQL"_s;
    QString emptyDb;
    QString fullDb;
    QString error;
    const QString emptyDir = dbs.tempPath() + u"/empty-"_s + name;
    const QString fullDir = dbs.tempPath() + u"/full-"_s + name;
    QElapsedTimer timer;
    timer.start();
    if (!prepare(dbs, engine, 0, emptyDir, &emptyDb, &error) || !prepare(dbs, engine, rows, fullDir, &fullDb, &error)) {
        out() << name << ": cannot prepare: " << error << Qt::endl;
        return;
    }
    out() << "\n" << name << ": " << rows << " passages stored in " << timer.elapsed() << " ms" << Qt::endl;
    QList<qint64> emptyShown, emptyProcess, fullShown, fullProcess;
    QString emptySteps, fullSteps;
    for (int r = 0; r < runs; ++r) {
        // Turn about, so that a busy moment of the machine falls on both.
        const Timing e = startOnce(emptyDir, emptyDb);
        const Timing f = startOnce(fullDir, fullDb);
        emptyShown << e.shown;
        emptyProcess << e.process;
        fullShown << f.shown;
        fullProcess << f.process;
        emptySteps = e.steps;
        fullSteps = f.steps;
    }
    const qint64 es = median(emptyShown), fs = median(fullShown);
    const qint64 ep = median(emptyProcess), fp = median(fullProcess);
    out() << u"%1 %2 %3"_s.arg(u"database"_s, -28).arg(u"to window ms"_s, 13).arg(u"process ms"_s, 11) << Qt::endl;
    out() << u"%1 %2 %3"_s.arg(u"no passages (baseline)"_s, -28).arg(es, 13).arg(ep, 11) << Qt::endl;
    out() << u"%1 %2 %3"_s.arg(QString::number(rows) + u" passages"_s, -28).arg(fs, 13).arg(fp, 11) << Qt::endl;
    out() << "last start without passages, " << emptySteps << "\nlast start with them, " << fullSteps << Qt::endl;
    out() << u"ratio to baseline: to window %1, process %2"_s.arg(double(fs) / qMax<qint64>(1, es), 0, 'f', 2)
                 .arg(double(fp) / qMax<qint64>(1, ep), 0, 'f', 2)
          << Qt::endl;
}

} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--child") == 0)
            return child(argc, argv);
    }
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    qint64 rows = 1000000;
    int runs = 5;
    QStringList engines = { u"sqlite"_s, u"postgresql"_s };
    for (int i = 1; i < args.size(); ++i) {
        if (args.at(i) == u"--rows"_s && i + 1 < args.size())
            rows = args.at(++i).toLongLong();
        else if (args.at(i) == u"--runs"_s && i + 1 < args.size())
            runs = qMax(1, args.at(++i).toInt());
        else if (args.at(i) == u"--engines"_s && i + 1 < args.size())
            engines = args.at(++i).split(u',');
        else {
            out() << "usage: bench_startup [--rows N] [--runs R] [--engines sqlite,postgresql]" << Qt::endl;
            return 2;
        }
    }
    out() << "Start of the station to its main window (offscreen), median of " << runs
          << " starts each; baseline = the same start over a database without passages." << Qt::endl;
    TestDatabases dbs;
    if (engines.contains(u"sqlite"_s))
        runEngine(TestDatabases::SQLite, rows, runs, dbs);
    if (engines.contains(u"postgresql"_s)) {
        if (TestDatabases::available(TestDatabases::PostgreSQL))
            runEngine(TestDatabases::PostgreSQL, rows, runs, dbs);
        else
            out() << "\nPostgreSQL skipped: " << TestDatabases::skipReason() << Qt::endl;
    }
    return 0;
}
