// A site of 64 slow panels (each answering 20 ms late, as real panels do): users sent to 64
// panels at once against one panel, a send of 10 changed users to all 64, and 64 panels' records
// pulled at once against one. Each figure is a ratio against a baseline of the same run.
//
// usage: bench_scale [USERS] [RECORDS] [--sends-only | --changed-only] [--sim-threads N]
//   default 2000 users and 2000 records a panel; 20000 users take about 7 minutes a panel at 20 ms
//   an answer. --sends-only leaves out the records; --changed-only notes the users as held by
//   every panel without sending them and times only the send of 10 changed users, so that the
//   full size of that figure takes seconds. The simulated panels run on N network threads (8).

#include "BenchOperator.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/records/RecordRetrieval.h"
#include "operations/users/PanelHeldUsers.h"
#include "operations/users/SendableUsers.h"
#include "operations/users/UserTransfer.h"
#include "protocol/PanelLink.h"
#include "protocol/ProcessTimeZone.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "store/OperatorSession.h"
#include "store/Schema.h"
#include "store/StationSettings.h"
#include "store/Transaction.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPanels = 64;
constexpr int kAnswerDelayMs = 20;
constexpr int kChanged = 10;

bool fillUsers(Database& db, int count)
{
    Transaction transaction(db);
    QList<QVariantList> rows;
    for (int id = 1; id <= count; ++id)
        rows << QVariantList{ id, qint64(100000 + id), QString(u"Ad"_s + QString::number(id)), 1, 1234 };
    QString error;
    if (!db.insertRows(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Grup No"_s, u"Sifre"_s }, rows, &error)) {
        std::fprintf(stderr, "users not stored: %s\n", qPrintable(error));
        return false;
    }
    return transaction.commit();
}

// What a full send would have left: every panel noted as holding every user.
bool noteAllHeld(Database& db, int panels)
{
    SendableUsers users = SendableUsers::load(db, UserSelection::all());
    users.addFingerprints();
    QMap<qint32, QByteArray> blocks;
    for (qsizetype i = 0; i < users.sendable.size(); ++i)
        blocks.insert(users.sendable.at(i).id, users.fingerprints.at(i));
    for (int n = 1; n <= panels; ++n) {
        QString error;
        if (!PanelHeldUsers(db).update(n, blocks, {}, QDateTime::currentDateTime(), &error)) {
            std::fprintf(stderr, "held users: %s\n", qPrintable(error));
            return false;
        }
    }
    return true;
}

// The station's side of one run: the usual link settings (pacing included), nobody asked.
class Site
{
public:
    Site(Database& db, const QList<PanelEntry>& entries)
        : m_db(db)
        , m_session(Clock::system())
        , m_entries(entries)
    {
        m_session.logInAsAdministrator(u"admin"_s);
        m_station.workingMode = StationSettings::Server;
    }

    // Seconds taken by the work over the first `panels` panels.
    template <typename Work> double timed(int panels, Work work)
    {
        PanelRoster roster;
        roster.setEntries(m_entries.mid(0, panels));
        PanelLink link;
        OperationContext context{ m_db, link, m_op, m_session, m_station, roster, Clock::system(), {} };
        QElapsedTimer timer;
        timer.start();
        work(context);
        return timer.elapsed() / 1000.0;
    }

private:
    Database& m_db;
    BenchOperator m_op;
    OperatorSession m_session;
    StationSettings m_station;
    QList<PanelEntry> m_entries;
};

void report(const char* what, double seconds, double baseline, const char* against)
{
    std::printf("%-46s %8.2f s   %.2fx %s\n", what, seconds, baseline > 0 ? seconds / baseline : 0.0, against);
}

} // namespace

int main(int argc, char** argv)
{
    // As the station's programs do: the zone file is read once, not at every local time.
    ProcessTimeZone::settle();
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    QStringList args = app.arguments().mid(1);
    const bool sendsOnly = args.removeAll(u"--sends-only"_s) > 0;
    const bool changedOnly = args.removeAll(u"--changed-only"_s) > 0;
    int simThreads = 8;
    if (const qsizetype at = args.indexOf(u"--sim-threads"_s); at >= 0 && at + 1 < args.size()) {
        simThreads = std::clamp(args.at(at + 1).toInt(), 1, kPanels);
        args.remove(at, 2);
    }
    const int users = args.size() > 0 ? args.at(0).toInt() : 2000;
    const int records = args.size() > 1 ? args.at(1).toInt() : 2000;
    QTemporaryDir dir;
    Database db;
    QString error;
    if (users < kChanged || !db.open(dir.filePath(u"bench.db"_s), Database::OpenMode::CreateIfMissing, &error)
        || !Schema::createMain(db, &error) || !fillUsers(db, users)) {
        std::fprintf(stderr, "database: %s\n", qPrintable(error));
        return 1;
    }

    // Real panels answer on their own processors: the simulated ones are spread over a few
    // network threads, so that one thread polling 64 panels' sockets does not stand in for them.
    std::vector<std::unique_ptr<SimulatorHost>> hosts;
    for (int h = 0; h < simThreads; ++h) {
        SimulatorHost::Options options;
        options.statusPort = -1;
        options.searchPort = -1;
        hosts.push_back(std::make_unique<SimulatorHost>());
        if (!hosts.back()->start(options, &error)) {
            std::fprintf(stderr, "simulator: %s\n", qPrintable(error));
            return 1;
        }
    }
    const auto stopHosts = [&hosts] {
        for (auto& host : hosts)
            host->stop();
    };
    QList<PanelEntry> entries;
    QList<SimPanel*> panels;
    for (int n = 1; n <= kPanels; ++n) {
        SimPanelConfig config;
        config.number = n;
        config.serial = 0x1000 + n;
        SimPanel* panel = hosts.at(size_t(n % simThreads))->addPanel(config, &error);
        if (!panel) {
            std::fprintf(stderr, "panel: %s\n", qPrintable(error));
            return 1;
        }
        panel->setAnswerDelay(kAnswerDelayMs, 0);
        panels << panel;
        entries << PanelEntry{
            n, n, quint16(config.serial), u"127.0.0.1"_s, panel->port(), {}, n, std::nullopt, false
        };
    }
    Site site(db, entries);
    const auto sink = [](const Message&) {};
    int failures = 0;

    std::printf("%d users, %d records a panel, panels answering %d ms late\n", users, records, kAnswerDelayMs);
    UserTransfer::Unattended send;
    double all = 0;
    if (changedOnly) {
        if (!noteAllHeld(db, kPanels))
            return 1;
        std::printf("every panel noted as holding every user\n");
    } else {
        send.walk = { 1, 3 };
        const double one = site.timed(1, [&](OperationContext& c) {
            failures += int(UserTransfer(c).sendUnattended(send, sink).failures.size());
        });
        report("users to 1 panel", one, one, "of one panel");
        send.walk = { kPanels, 3 };
        all = site.timed(kPanels, [&](OperationContext& c) {
            failures += int(UserTransfer(c).sendUnattended(send, sink).failures.size());
        });
        report("users to 64 panels, 64 at once", all, one, "of one panel (goal <= 1.2)");
    }
    send.walk = { kPanels, 3 };

    for (int id = 1; id <= kChanged; ++id)
        db.exec(u"UPDATE \"Users\" SET \"Grup No\" = 2 WHERE \"ID\" = ?"_s, { id * (users / kChanged) });
    send.changedOnly = true;
    const double changed = site.timed(kPanels, [&](OperationContext& c) {
        failures += int(UserTransfer(c).sendUnattended(send, sink).failures.size());
    });
    report("10 changed users to 64 panels, 64 at once", changed, all, "of the full send (goal < 5 s)");
    if (changedOnly || sendsOnly) {
        std::printf("panels failed: %d\n", failures);
        stopHosts();
        db.close();
        return failures == 0 ? 0 : 1;
    }

    // Records: 64 panels one after another, then 64 at once, each time with fresh records.
    const QDateTime first(QDate(2026, 1, 5), QTime(7, 0));
    for (SimPanel* panel : panels)
        panel->seedRecords(records, first);
    RecordRetrieval::Options pull;
    pull.target = PanelTarget::All;
    pull.eraseAfter = true;
    pull.scheduled = true;
    pull.parallel = ParallelWalk::Options{ 1, 3 };
    const double pullOne
        = site.timed(1, [&](OperationContext& c) { failures += int(RecordRetrieval::run(c, pull).failures.size()); });
    report("records of 1 panel", pullOne, pullOne, "of one panel");
    const double pullInTurn = site.timed(
        kPanels, [&](OperationContext& c) { failures += int(RecordRetrieval::run(c, pull).failures.size()); });
    report("records of 64 panels, one after another", pullInTurn, pullOne, "of one panel");
    for (SimPanel* panel : panels)
        panel->seedRecords(records, first.addDays(1));
    pull.parallel = ParallelWalk::Options{ kPanels, 3 };
    const double pullAll = site.timed(
        kPanels, [&](OperationContext& c) { failures += int(RecordRetrieval::run(c, pull).failures.size()); });
    report("records of 64 panels, 64 at once", pullAll, pullOne, "of one panel");
    report("  the same against one after another", pullAll, pullInTurn, "of one after another");
    const int stored = db.scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt();
    std::printf("passages stored: %d of %d; panels failed: %d\n", stored, 2 * kPanels * records, failures);
    stopHosts();
    db.close();
    return failures == 0 && stored == 2 * kPanels * records ? 0 : 1;
}
