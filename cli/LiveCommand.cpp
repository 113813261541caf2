#include "LiveCommand.h"

#include "CliArguments.h"
#include "CliConsole.h"
#include "CliContext.h"
#include "CliExit.h"
#include "operations/live/LiveMonitor.h"
#include "operations/panels/PanelsPushPort.h"
#include "operations/records/RecordBackfill.h"
#include "operations/station/Station.h"
#include "store/CodeTable.h"
#include "store/Database.h"
#include "store/Translate.h"

#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <csignal>

using namespace Qt::Literals::StringLiterals;

namespace {

std::atomic<bool> s_stop{ false };

void stopListening(int)
{
    s_stop.store(true);
}

const QList<CliArguments::Option> kOptions{
    { u"--port"_s, u"N"_s, u"TCP port the panels push to (default: their remote port in the panel list)"_s },
    { u"--listen"_s, u"ADDRESS"_s, u"address to listen on (default: every address)"_s },
    { u"--udp-port"_s, u"N"_s, u"UDP port of status datagrams (default 11001)"_s },
    { u"--no-udp"_s, {}, u"do not listen for datagrams"_s },
    { u"--no-backfill"_s, {}, u"do not fetch the records of gaps from the panels"_s },
    { u"--count"_s, u"N"_s, u"stop after N passages were stored"_s },
};

// The event texts of the delivered code table, in the run's language.
QHash<qint32, QString> eventTexts(const Database& db)
{
    QHash<qint32, QString> texts;
    for (const CodeTable::Row& row : CodeTable(CodeTable::Kind::EventCodes).rows(db))
        texts.insert(row.code, Translate(row.name));
    return texts;
}

// Machine-readable numbers first, then what they mean for a person.
QString passageLine(const RecordRow& row, const QHash<qint32, QString>& events)
{
    const qint32 code = storedNumber(row.code);
    const QString way = Translate(row.direction == Direction::Entry ? u"Giriş"_s : u"Çıkış"_s);
    return u"passage record=%1 panel=%2 door=%3 id=%4 card=%5 time=%6 direction=%7 code=%8 zone=%9/%10"_s
               .arg(row.recordNo)
               .arg(row.panelId)
               .arg(row.door)
               .arg(row.userId)
               .arg(row.cardId)
               .arg(row.time.toString(u"dd/MM/yyyy HH:mm:ss"_s))
               .arg(storedNumber(row.direction))
               .arg(storedNumber(row.code))
               .arg(row.localZone)
               .arg(row.globalZone)
        + u" event=\"%1\" way=\"%2\""_s.arg(events.value(code, QString::number(code)), way);
}

QString statusLine(const LiveStatusChange& change)
{
    QString doors;
    for (int d = 0; d < 4; ++d)
        doors += QString::number(change.status.doorState[d]) + QString::number(change.status.lineState[d]);
    QString line = u"status panel=%1 doors=%2"_s.arg(change.panelNumber).arg(doors);
    const Message message = change.message();
    if (!message.isEmpty())
        line += u" message="_s + Translate(message);
    return line;
}

} // namespace

QString LiveCommand::name() const
{
    return u"live"_s;
}

QString LiveCommand::summary() const
{
    return u"watch the panels live, storing and printing each passage"_s;
}

QString LiveCommand::help() const
{
    return u"kx410ctl live [options]\n\n"
           "Listens for the passages and status frames the panels push, stores every passage as the\n"
           "monitoring page does and prints one line for each passage and status change. At start and\n"
           "whenever a panel's connection comes back after a loss, the panel's stored records are\n"
           "fetched (without erasing them) so passages made during the gap are stored too, once.\n"
           "Stops cleanly on an interrupt or termination signal, storing what has arrived.\n\n"
           "Options:\n"_s
        + CliArguments::describe(kOptions) + u"\nExample:\n  kx410ctl live --port 6000 --udp-port 11001\n"_s;
}

int LiveCommand::run(CliContext& context, const QStringList& arguments)
{
    CliArguments args;
    QString error;
    if (!args.parse(arguments, kOptions, &error) || !args.words().isEmpty()) {
        CliConsole::errLine(u"live: "_s + (error.isEmpty() ? u"unexpected words"_s : error));
        return CliExit::Usage;
    }
    LiveSettings settings;
    if (args.has(u"--listen"_s))
        settings.listenAddress = QHostAddress(args.value(u"--listen"_s));
    if (args.has(u"--port"_s)) {
        const auto port = args.number(u"--port"_s, 1, 65535, &error);
        if (!port) {
            CliConsole::errLine(u"live: "_s + error);
            return CliExit::Usage;
        }
        settings.tcpPort = static_cast<quint16>(*port);
    } else {
        settings.tcpPort = PanelsPushPort(context.db());
        if (settings.tcpPort == 0) {
            CliConsole::errLine(u"live: no panel has a remote port; give --port N"_s);
            return CliExit::Usage;
        }
    }
    settings.listenUdp = !args.has(u"--no-udp"_s);
    if (args.has(u"--udp-port"_s)) {
        const auto port = args.number(u"--udp-port"_s, 0, 65535, &error);
        if (!port) {
            CliConsole::errLine(u"live: "_s + error);
            return CliExit::Usage;
        }
        settings.udpPort = static_cast<quint16>(*port);
    }
    int stopAfter = 0;
    if (args.has(u"--count"_s)) {
        const auto count = args.number(u"--count"_s, 1, 1000000000, &error);
        if (!count) {
            CliConsole::errLine(u"live: "_s + error);
            return CliExit::Usage;
        }
        stopAfter = *count;
    }

    // The station listens only now, on demand; the worker runs only for the back-fill.
    Station& station = context.station();
    const bool backfilling = !args.has(u"--no-backfill"_s);
    if (backfilling && !station.startWorker(&error)) {
        CliConsole::errLine(u"live: cannot start the panel worker: "_s + error);
        return CliExit::Failed;
    }
    station.network().live = settings;
    station.network().livePortFromPanels = false;
    station.network().backfill = backfilling;
    // A failed panel is tried again after a second, as the command line always did.
    station.network().backfillRetryMs = 1000;
    if (!station.startLive(&error)) {
        CliConsole::errLine(u"live: cannot listen: "_s + error);
        return CliExit::Failed;
    }
    LiveMonitor& monitor = station.live();
    if (RecordBackfill* backfill = station.backfill()) {
        QObject::connect(backfill, &RecordBackfill::panelFetched, backfill,
                         [](qint32 panel, int downloaded, int added) {
                             CliConsole::outLine(
                                 u"backfill panel=%1 downloaded=%2 added=%3"_s.arg(panel).arg(downloaded).arg(added));
                         });
        QObject::connect(backfill, &RecordBackfill::panelFailed, backfill, [](qint32 panel, const QString& reason) {
            CliConsole::errLine(u"backfill panel=%1 failed: %2"_s.arg(panel).arg(reason));
        });
    }
    CliConsole::errLine(
        Translate(Message(u"Canlı izleme dinliyor:"_s)
                      .value(u" TCP "_s + QString::number(monitor.tcpPort())
                             + (monitor.udpPort() ? u", UDP "_s + QString::number(monitor.udpPort()) : QString()))));

    QEventLoop loop;
    qint64 stored = 0;
    const QHash<qint32, QString> events = eventTexts(context.db());
    QObject::connect(&monitor, &LiveMonitor::passagesStored, &loop, [&](const QList<RecordRow>& rows) {
        for (const RecordRow& row : rows)
            CliConsole::outLine(passageLine(row, events));
        stored += rows.size();
        if (stopAfter > 0 && stored >= stopAfter)
            loop.quit();
    });
    QObject::connect(&monitor, &LiveMonitor::statusChanged, &loop,
                     [](const LiveStatusChange& change) { CliConsole::outLine(statusLine(change)); });
    QObject::connect(&monitor, &LiveMonitor::storeFailed, &loop,
                     [](const QString& why) { CliConsole::errLine(u"live: storing failed, will retry: "_s + why); });

    s_stop.store(false);
    std::signal(SIGTERM, stopListening);
    std::signal(SIGINT, stopListening);
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
        if (s_stop.load() || context.op().cancelRequested())
            loop.quit();
    });
    watch.start(100);
    loop.exec();

    // The back-fill, then the monitor (storing what arrived), then the worker.
    station.stop();
    CliConsole::errLine(Translate(
        Message(u"Canlı izleme durdu."_s).value(u' ' + QString::number(stored) + u' ').add(u"geçiş kaydedildi"_s)));
    return CliExit::Success;
}
