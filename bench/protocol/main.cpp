// Request/answer exchanges per second: the station's link and command functions against the
// simulator, beside plain TCP round trips of the same size on loopback.

#include "BenchLoopback.h"
#include "LoopbackServer.h"
#include "protocol/PanelAddress.h"
#include "protocol/PanelLink.h"
#include "protocol/UserCommands.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTextStream>
#include <algorithm>
#include <functional>

namespace {
struct Rate
{
    double perSecond = 0;
    double medianMicros = 0;
    double p99Micros = 0;
};

// Runs `step` for `ms` milliseconds and reports how often it ran and its median duration.
Rate measure(int ms, const std::function<bool()>& step)
{
    QList<qint64> nanos;
    QElapsedTimer total;
    total.start();
    while (total.elapsed() < ms) {
        QElapsedTimer one;
        one.start();
        if (!step())
            return {};
        nanos.append(one.nsecsElapsed());
    }
    std::sort(nanos.begin(), nanos.end());
    if (nanos.isEmpty())
        return {};
    return { nanos.size() * 1000.0 / double(total.elapsed()), nanos[nanos.size() / 2] / 1000.0,
             nanos[nanos.size() * 99 / 100] / 1000.0 };
}

// One request written, then read until `answerLength` bytes have come back.
bool roundTrip(QTcpSocket& socket, const QByteArray& request, qsizetype answerLength)
{
    return BenchLoopback::exchange(socket, request, answerLength, 2000);
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    const int ms = argc > 1 ? QByteArray(argv[1]).toInt() : 3000;

    SimulatorHost host;
    QString error;
    SimPanel* panel = BenchLoopback::startPanel(host, &error);
    if (!panel) {
        out << error << '\n';
        return 1;
    }

    const QByteArray request = "%RC12AB007**\r";
    const QByteArray answer = "$RC12AB00700001**";
    LoopbackServer echo(answer);
    const quint16 echoPort = echo.start();
    QTcpSocket raw;
    raw.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    raw.connectToHost(QHostAddress::LocalHost, echoPort);
    if (!raw.waitForConnected(2000)) {
        out << "cannot reach the echo server\n";
        return 1;
    }
    const Rate baseline = measure(ms, [&] { return roundTrip(raw, request, answer.size()); });

    QTcpSocket direct;
    direct.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    direct.connectToHost(QHostAddress::LocalHost, panel->port());
    direct.waitForConnected(2000);
    const Rate simulator = measure(ms, [&] { return roundTrip(direct, request, answer.size()); });
    direct.abort();

    PanelLink link;
    if (!BenchLoopback::openLink(link, panel->port())) {
        out << "cannot open the panel link\n";
        return 1;
    }
    const PanelAddress address(7, 0x12AB);
    const Rate count
        = measure(ms, [&] { return ReadRecordCount(link, address) == CommandResult<qint32>::accepted(0); });
    UserRecord user;
    user.id = 1;
    user.cardId = 100001;
    user.groupNo = 1;
    const QDateTime now = QDateTime::currentDateTime();
    const Rate write = measure(ms, [&] {
        user.id = user.id % 20000 + 1;
        return SendNewCard(link, address, user, now).isAccepted();
    });

    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(1);
    const auto line = [&](const char* what, const Rate& rate) {
        out << qSetFieldWidth(44) << Qt::left << what << qSetFieldWidth(0) << qSetFieldWidth(10) << Qt::right
            << rate.perSecond << qSetFieldWidth(0) << " /s   median " << rate.medianMicros << " us   p99 "
            << rate.p99Micros << " us   ratio " << qSetRealNumberPrecision(3)
            << (baseline.perSecond > 0 ? rate.perSecond / baseline.perSecond : 0) << qSetRealNumberPrecision(1) << '\n';
    };
    out << "Exchanges per second on loopback, " << ms << " ms each, pacing pause 0\n";
    line("raw TCP round trip (baseline)", baseline);
    line("raw round trip with the simulator", simulator);
    line("ReadRecordCount over PanelLink", count);
    line("SendNewCard over PanelLink", write);
    const bool ok = baseline.perSecond > 0 && simulator.perSecond > 0 && count.perSecond > 0 && write.perSecond > 0;
    if (!ok)
        out << "an exchange failed\n";
    return ok ? 0 : 1;
}
