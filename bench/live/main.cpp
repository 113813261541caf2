// Many panels pushing passages live at once: 64 simulated panels at a sustained total rate
// (2000 passages a second by default) for a while, into the live monitor on its own thread. The
// main thread plays the window: its event loop runs a 1 ms timer that measures how late it fires
// while every stored row is appended to a list model. Prints passages sent and stored (they must
// be equal) and the longest stall of the loop against the same loop idle (the baseline).
//
//   bench_live [--seconds N] [--rate N] [--panels N] [--pg URL]

#include "operations/live/LiveMonitor.h"
#include "protocol/ProcessTimeZone.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "support/TestDatabases.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QStringListModel>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QTextStream out(stdout);

// Runs the loop for ms milliseconds and returns the longest lateness of a 1 ms timer.
double loopStall(int ms, const std::function<bool()>& done = {})
{
    QEventLoop loop;
    QElapsedTimer clock;
    clock.start();
    qint64 last = clock.nsecsElapsed();
    qint64 worst = 0;
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
        const qint64 now = clock.nsecsElapsed();
        worst = qMax(worst, now - last - 1000000);
        last = now;
        if (clock.elapsed() >= ms || (done && done()))
            loop.quit();
    });
    tick.start(1);
    loop.exec();
    return double(worst) / 1e6;
}

int runEngine(TestDatabases::Engine engine, int seconds, int rate, int panels)
{
    const QString name = engine == TestDatabases::SQLite ? u"SQLite"_s : u"PostgreSQL"_s;
    TestDatabases dbs;
    Database db;
    QString error;
    if (!dbs.openFresh(engine, db, true, &error)) {
        out << name << ": cannot open: " << error << Qt::endl;
        return 1;
    }
    LiveMonitor monitor(Clock::system());
    LiveSettings settings;
    settings.listenAddress = QHostAddress(QHostAddress::LocalHost);
    settings.listenUdp = false;
    if (!monitor.start(db, settings, nullptr, &error)) {
        out << name << ": cannot listen: " << error << Qt::endl;
        return 1;
    }
    SimulatorHost sim;
    SimulatorHost::Options options;
    options.statusPort = -1;
    options.searchPort = -1;
    if (!sim.start(options, &error))
        return 1;
    QList<SimPanel*> list;
    for (int n = 1; n <= panels; ++n) {
        SimPanelConfig config;
        config.number = n;
        config.serial = 0x1000 + n;
        config.pushHost = u"127.0.0.1"_s;
        config.pushPort = monitor.tcpPort();
        SimPanel* panel = sim.addPanel(config, &error);
        if (!panel)
            return 1;
        panel->modify([](SimPanelState& state) {
            SimGroup group;
            group.number = 1;
            group.doorAllowed = { true, true, true, true };
            state.groups.insert(1, group);
            for (int id = 1; id <= 2000; ++id) {
                SimUser user;
                user.id = id;
                user.card = 100000 + id;
                user.group = 1;
                state.putUser(user);
            }
        });
        list << panel;
    }

    // The window's model: every stored row is appended as it arrives.
    QStringListModel model;
    qint64 stored = 0;
    QObject::connect(&monitor, &LiveMonitor::passagesStored, &model, [&](const QList<RecordRow>& rows) {
        const int first = model.rowCount();
        model.insertRows(first, int(rows.size()));
        for (int i = 0; i < rows.size(); ++i) {
            const RecordRow& r = rows.at(i);
            model.setData(model.index(first + i),
                          u"%1 %2 %3 %4"_s.arg(r.recordNo)
                              .arg(r.panelId)
                              .arg(r.userId)
                              .arg(r.time.toString(u"dd/MM/yyyy HH:mm:ss"_s)));
        }
        stored += rows.size();
    });

    const double idle = loopStall(2000);
    sim.setPassageRate(0, double(rate) / panels);
    QElapsedTimer clock;
    clock.start();
    const double busy = loopStall(seconds * 1000);
    sim.setPassageRate(0, 0);
    const double elapsed = clock.elapsed() / 1000.0;
    const auto sent = [&] {
        qint64 total = 0;
        for (SimPanel* p : list)
            total += p->recordCount();
        return total;
    };
    // Drain: wait until every passage the panels made is stored (or 60 s pass).
    loopStall(60000, [&] { return stored >= sent(); });
    monitor.flush();
    loopStall(200);
    const qint64 inDb = db.scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toLongLong();
    const LiveCounters counters = monitor.counters();
    out << name << ": " << panels << " panels, " << seconds << " s at " << rate << " passages/s" << Qt::endl;
    out << "  sent " << sent() << ", stored " << inDb << ", rows appended " << model.rowCount() << " ("
        << double(sent()) / elapsed << " passages/s sustained, " << counters.batchesCommitted << " batches)"
        << Qt::endl;
    out << "  longest stall of the window loop: " << busy << " ms while storing, " << idle
        << " ms idle (baseline), ratio " << (idle > 0 ? busy / idle : 0) << Qt::endl;
    const bool ok = inDb == sent() && model.rowCount() == inDb;
    out << "  " << (ok ? "stored == sent" : "MISMATCH: stored != sent") << Qt::endl;
    monitor.stop();
    sim.stop();
    db.close();
    return ok ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    // As the station does at start: local date-times without a zone file check each.
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    int seconds = 60;
    int rate = 2000;
    int panels = 64;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == u"--seconds" && i + 1 < args.size())
            seconds = args[++i].toInt();
        else if (args[i] == u"--rate" && i + 1 < args.size())
            rate = args[++i].toInt();
        else if (args[i] == u"--panels" && i + 1 < args.size())
            panels = args[++i].toInt();
        else if (args[i] == u"--pg" && i + 1 < args.size())
            qputenv("KX_TEST_PG_URL", args[++i].toUtf8());
    }
    int status = runEngine(TestDatabases::SQLite, seconds, rate, panels);
    if (TestDatabases::available(TestDatabases::PostgreSQL))
        status |= runEngine(TestDatabases::PostgreSQL, seconds, rate, panels);
    return status;
}
