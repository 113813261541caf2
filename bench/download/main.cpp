// Downloading 40000 stored records: the station's DownloadRecords against the simulator, beside a
// plain TCP transfer of the same bytes on loopback.

#include "BenchLoopback.h"
#include "LoopbackServer.h"
#include "protocol/PanelAddress.h"
#include "protocol/PanelLink.h"
#include "protocol/ProcessTimeZone.h"
#include "protocol/RecordDownload.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTextStream>
#include <algorithm>
#include <functional>

namespace {
constexpr int kRecords = 40000;

// The median of `rounds` runs of `step`, in milliseconds; negative when a run failed.
double medianMs(int rounds, const std::function<bool()>& step)
{
    QList<double> times;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (!step())
            return -1;
        times.append(timer.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// Sends the request and reads until `length` bytes have come back.
bool transfer(QTcpSocket& socket, const QByteArray& request, qsizetype length)
{
    return BenchLoopback::exchange(socket, request, length, 3000);
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    const int rounds = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 7;

    SimulatorHost host;
    QString error;
    SimPanel* panel = BenchLoopback::startPanel(host, &error);
    if (!panel) {
        out << error << '\n';
        return 1;
    }
    panel->seedRecords(kRecords);
    const QByteArray request = "%DD12AB007**\r";
    QElapsedTimer building;
    building.start();
    const QByteArray stream = panel->handleRequest(request.chopped(1)).chunks.join();
    const double buildMs = building.nsecsElapsed() / 1e6;

    LoopbackServer server(stream);
    const quint16 port = server.start();
    QTcpSocket raw;
    raw.connectToHost(QHostAddress::LocalHost, port);
    if (!raw.waitForConnected(2000)) {
        out << "cannot reach the stream server\n";
        return 1;
    }
    const double baseline = medianMs(rounds, [&] { return transfer(raw, request, stream.size()); });

    QTcpSocket direct;
    direct.connectToHost(QHostAddress::LocalHost, panel->port());
    direct.waitForConnected(2000);
    const double simulator = medianMs(rounds, [&] { return transfer(direct, request, stream.size()); });
    direct.abort();

    PanelLink link;
    if (!BenchLoopback::openLink(link, panel->port())) {
        out << "cannot open the panel link\n";
        return 1;
    }
    const PanelAddress address(7, 0x12AB);
    const auto lookup = [](qint32 userId) { return qint64(100000) + userId; };
    const auto downloadOnce = [&] {
        const RecordDownload::Result result = DownloadRecords(link, address, lookup);
        return result.outcome == RecordDownloadCollector::Complete && result.records.size() == kRecords;
    };
    // First as a process that left TZ unset, then with the zone named once as the station does
    // at start-up (each local date-time otherwise checks the zone file on disk).
    const bool zoneWasSet = qEnvironmentVariableIsSet("TZ");
    const double unsettled = zoneWasSet ? -1 : medianMs(rounds, downloadOnce);
    ProcessTimeZone::settle();
    const double download = medianMs(rounds, downloadOnce);

    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(1);
    const auto line = [&](const char* what, double ms) {
        out << qSetFieldWidth(40) << Qt::left << what << qSetFieldWidth(0) << qSetFieldWidth(9) << Qt::right << ms
            << qSetFieldWidth(0) << " ms   " << qSetFieldWidth(10) << (ms > 0 ? kRecords * 1000.0 / ms : 0)
            << qSetFieldWidth(0) << " records/s   ratio " << qSetRealNumberPrecision(3) << (ms > 0 ? baseline / ms : 0)
            << qSetRealNumberPrecision(1) << '\n';
    };
    out << kRecords << " records (" << stream.size() << " bytes), median of " << rounds << " runs\n";
    out << "simulator builds the stream in " << buildMs << " ms\n";
    line("raw TCP transfer (baseline)", baseline);
    line("raw transfer from the simulator", simulator);
    if (!zoneWasSet)
        line("DownloadRecords, TZ unset", unsettled);
    line("DownloadRecords over PanelLink", download);
    const bool ok = baseline > 0 && simulator > 0 && download > 0 && (zoneWasSet || unsettled > 0);
    if (!ok)
        out << "a transfer failed\n";
    return ok ? 0 : 1;
}
