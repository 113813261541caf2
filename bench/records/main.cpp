// Fetching one panel's full record memory (40000 records) into a database that already holds a
// million passages: download, decode and store end to end, and the store step alone, each as a
// ratio against a plain bulk insert of the same rows into the same engine in the same run.
// SQLite always; PostgreSQL with --pg URL or KX_TEST_PG_URL.
//
//   bench_records [--records N] [--existing N] [--pg URL]

#include "operations/records/RecordFetch.h"
#include "operations/records/RecordImport.h"
#include "operations/records/RecordLookup.h"
#include "operations/records/RecordRow.h"
#include "protocol/PanelLink.h"
#include "protocol/ProcessTimeZone.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "store/Transaction.h"
#include "support/TestDatabases.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QTextStream out(stdout);

double ms(qint64 ns)
{
    return double(ns) / 1e6;
}

bool fillExisting(Database& db, int count)
{
    // Passages of every panel over the year before the panel's records, plus 20000 users.
    const QDateTime start(QDate(2015, 1, 1), QTime(0, 0));
    const int chunk = 50000;
    for (int done = 0; done < count; done += chunk) {
        QList<QVariantList> rows;
        const int n = qMin(chunk, count - done);
        rows.reserve(n);
        for (int i = 0; i < n; ++i) {
            const int k = done + i;
            RecordRow row;
            row.panelId = 1 + k % 64;
            row.door = 1 + k % 4;
            row.userId = 1 + k % 20000;
            row.cardId = 100000 + row.userId;
            row.time = start.addSecs(k * 30);
            row.code = PassageCode::Granted;
            row.userType = UserType::Personnel;
            rows << row.values(db);
        }
        Transaction tx(db);
        QString error;
        if (!db.insertRows(u"AccessDatas"_s, RecordRow::columns(), rows, &error) || !tx.commit(&error)) {
            out << "fill failed: " << error << Qt::endl;
            return false;
        }
    }
    QList<QVariantList> users;
    for (int id = 1; id <= 20000; ++id)
        users << QVariantList{ id, 100000 + id, id % 10 == 0 ? 1 : 0 };
    Transaction tx(db);
    return db.insertRows(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Kullanici Tipi"_s }, users) && tx.commit();
}

void runEngine(TestDatabases::Engine engine, int records, int existing)
{
    TestDatabases dbs;
    Database db;
    QString error;
    const QString name = engine == TestDatabases::SQLite ? u"SQLite"_s : u"PostgreSQL"_s;
    if (!dbs.openFresh(engine, db, true, &error)) {
        out << name << ": cannot open: " << error << Qt::endl;
        return;
    }
    QElapsedTimer timer;
    timer.start();
    if (!fillExisting(db, existing))
        return;
    out << name << ": " << existing << " passages stored beforehand in " << timer.elapsed() << " ms" << Qt::endl;

    SimulatorHost sim;
    SimulatorHost::Options options;
    options.statusPort = -1;
    options.searchPort = -1;
    if (!sim.start(options, &error))
        return;
    SimPanelConfig config;
    config.number = 1;
    SimPanel* panel = sim.addPanel(config, &error);
    panel->seedRecords(records, QDateTime(QDate(2016, 6, 1), QTime(0, 0)));
    const PanelAddress address(1, quint16(config.serial));
    PanelLink link;
    PanelLink::Settings linkSettings;
    linkSettings.pacingMs = 0;
    link.setSettings(linkSettings);
    link.ConnectPanel(u"127.0.0.1"_s, panel->port());

    // Download and decode alone; the decoded records feed the store step and the baseline.
    RecordLookup lookup(db);
    lookup.loadUserCards();
    timer.restart();
    const RecordDownload::Result download
        = DownloadRecords(link, address, [&lookup](qint32 id) { return lookup.cardOfUser(id); });
    const qint64 downloadNs = timer.nsecsElapsed();

    // Baseline: the same rows, already built, in one plain bulk insert (as panel 3).
    QList<QVariantList> plain;
    plain.reserve(download.records.size());
    for (const DownloadedRecord& r : download.records) {
        RecordRow row;
        row.panelId = 3;
        row.door = r.door;
        row.localZone = r.localZone;
        row.userId = r.userId;
        row.cardId = r.cardId;
        row.time = r.time;
        row.direction = r.direction;
        row.code = r.code;
        plain << row.values(db);
    }
    timer.restart();
    {
        Transaction tx(db);
        db.insertRows(u"AccessDatas"_s, RecordRow::columns(), plain);
        tx.commit();
    }
    const qint64 baselineNs = timer.nsecsElapsed();

    // The store step alone (as panel 2): duplicates, user types, visits, zones, insert.
    RecordImport import(db);
    RecordImport::Summary summary;
    timer.restart();
    import.store(2, download.records, &summary, &error);
    const qint64 storeNs = timer.nsecsElapsed();

    // End to end for panel 1: download, decode and store.
    timer.restart();
    const RecordFetch::Result fetched = RecordFetch::run(link, db, Clock::system(), 1, address);
    const qint64 endNs = timer.nsecsElapsed();
    // A second fetch finds everything stored already.
    timer.restart();
    const RecordFetch::Result again = RecordFetch::run(link, db, Clock::system(), 1, address);
    const qint64 againNs = timer.nsecsElapsed();
    link.DisconnectPanel();
    sim.stop();

    out << name << ": " << download.records.size() << " records" << Qt::endl;
    out << "  plain bulk insert (baseline)   " << ms(baselineNs) << " ms" << Qt::endl;
    out << "  store step                     " << ms(storeNs) << " ms  ratio " << double(storeNs) / baselineNs
        << "  (added " << summary.added << ")" << Qt::endl;
    out << "  download and decode            " << ms(downloadNs) << " ms  ratio " << double(downloadNs) / baselineNs
        << Qt::endl;
    out << "  end to end                     " << ms(endNs) << " ms  ratio " << double(endNs) / baselineNs
        << "  (added " << fetched.import.added << ")" << Qt::endl;
    out << "  end to end, all stored already " << ms(againNs) << " ms  ratio " << double(againNs) / baselineNs
        << "  (added " << again.import.added << ", skipped " << again.import.duplicates << ")" << Qt::endl;
    db.close();
}

} // namespace

int main(int argc, char** argv)
{
    // As the station does at start: local date-times without a zone file check each.
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    int records = 40000;
    int existing = 1000000;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == u"--records" && i + 1 < args.size())
            records = args[++i].toInt();
        else if (args[i] == u"--existing" && i + 1 < args.size())
            existing = args[++i].toInt();
        else if (args[i] == u"--pg" && i + 1 < args.size())
            qputenv("KX_TEST_PG_URL", args[++i].toUtf8());
    }
    runEngine(TestDatabases::SQLite, records, existing);
    if (TestDatabases::available(TestDatabases::PostgreSQL))
        runEngine(TestDatabases::PostgreSQL, records, existing);
    else
        out << "PostgreSQL: skipped (give --pg URL or set KX_TEST_PG_URL)" << Qt::endl;
    return 0;
}
