// Sends 20000 users to one simulated panel and to eight, with no pacing pause, and sets the
// users per second beside the raw request/answer rate of the same frames on a plain socket.

#include "BenchOperator.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/users/UserTransfer.h"
#include "protocol/PanelLink.h"
#include "protocol/UserCommands.h"
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
#include <QTcpSocket>
#include <QTemporaryDir>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int kUsers = 20000;

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

// Plain round trips of a user frame on one socket: what the wire and the simulator allow.
double rawRate(quint16 port, int serial, int rounds)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    if (!socket.waitForConnected(2000))
        return 0;
    UserRecord user;
    user.id = 1;
    user.cardId = 100001;
    const QByteArray frame = BuildNewCardFrame(PanelAddress(1, quint16(serial)), user, QDateTime::currentDateTime());
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < rounds; ++i) {
        socket.write(frame);
        QByteArray answer;
        while (!answer.contains("**")) {
            if (!socket.waitForReadyRead(2000))
                return 0;
            answer += socket.readAll();
        }
    }
    return rounds * 1000.0 / qMax<qint64>(1, timer.elapsed());
}

double sendRate(Database& db, PanelRoster& roster, int panels, int* sent)
{
    PanelLink link;
    PanelLink::Settings settings;
    settings.pacingMs = 0;
    settings.reconnectPauseMs = 0;
    link.setSettings(settings);
    BenchOperator op;
    OperatorSession session(Clock::system());
    session.logInAsAdministrator(u"admin"_s);
    StationSettings station;
    station.workingMode = StationSettings::Server;
    QList<PanelEntry> entries = roster.entries().mid(0, panels);
    PanelRoster walked;
    walked.setEntries(entries);
    OperationContext context{ db, link, op, session, station, walked, Clock::system(), {} };
    QElapsedTimer timer;
    timer.start();
    const WalkResult result = UserTransfer(context).sendUsers(PanelTarget::All, UserSelection::all());
    const qint64 ms = qMax<qint64>(1, timer.elapsed());
    *sent = result.succeeded() ? kUsers * panels : 0;
    return *sent * 1000.0 / ms;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    Database db;
    QString error;
    if (!db.open(dir.filePath(u"bench.db"_s), Database::OpenMode::CreateIfMissing, &error)
        || !Schema::createMain(db, &error) || !fillUsers(db, kUsers)) {
        std::fprintf(stderr, "database: %s\n", qPrintable(error));
        return 1;
    }

    SimulatorHost sim;
    SimulatorHost::Options options;
    options.statusPort = -1;
    options.searchPort = -1;
    if (!sim.start(options, &error)) {
        std::fprintf(stderr, "simulator: %s\n", qPrintable(error));
        return 1;
    }
    QList<PanelEntry> entries;
    for (int n = 1; n <= 8; ++n) {
        SimPanelConfig config;
        config.number = n;
        config.serial = 0x1000 + n;
        SimPanel* panel = sim.addPanel(config, &error);
        if (!panel) {
            std::fprintf(stderr, "panel: %s\n", qPrintable(error));
            return 1;
        }
        entries << PanelEntry{
            n, n, quint16(config.serial), u"127.0.0.1"_s, panel->port(), {}, n, std::nullopt, false
        };
    }
    PanelRoster roster;
    roster.setEntries(entries);

    const double raw = rawRate(entries[0].port, entries[0].serial, kUsers);
    int sent = 0;
    const double one = sendRate(db, roster, 1, &sent);
    std::printf("raw user-frame round trips      : %10.0f /s\n", raw);
    std::printf("users sent to 1 panel           : %10.0f /s (%d users)  ratio to raw %.2f\n", one, sent,
                raw > 0 ? one / raw : 0.0);
    const double eight = sendRate(db, roster, 8, &sent);
    std::printf("users sent to 8 panels, in turn : %10.0f /s (%d users)  ratio to raw %.2f\n", eight, sent,
                raw > 0 ? eight / raw : 0.0);
    sim.stop();
    db.close();
    return sent > 0 ? 0 : 1;
}
