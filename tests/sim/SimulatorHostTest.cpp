#include "sim/SimulatorHost.h"

#include "sim/SimCommandLine.h"
#include "sim/SimPanel.h"
#include "sim/SimPushClient.h"

#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

namespace {
SimulatorHost::Options loopbackOptions()
{
    SimulatorHost::Options options;
    options.statusPort = 0;
    options.searchPort = 0;
    options.controlPort = 0;
    return options;
}

// Reads until `length` bytes have arrived or 5 s pass.
QByteArray readBytes(QTcpSocket& socket, qsizetype length)
{
    QByteArray data;
    QElapsedTimer timer;
    timer.start();
    while (data.size() < length && timer.elapsed() < 5000) {
        if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(100))
            continue;
        data += socket.readAll();
    }
    return data;
}

QByteArray readLine(QTcpSocket& socket)
{
    QElapsedTimer timer;
    timer.start();
    while (!socket.canReadLine() && timer.elapsed() < 5000)
        socket.waitForReadyRead(100);
    return socket.readLine().trimmed();
}
} // namespace

class SimulatorHostTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<SimulatorHost>();
        QString error;
        QVERIFY2(m_host->start(loopbackOptions(), &error), qPrintable(error));
        m_panel = m_host->addPanel({ 7, 0x12AB, 0, QString(), 0 }, &error);
        QVERIFY2(m_panel, qPrintable(error));
        QVERIFY(m_panel->port() > 0);
    }

    void cleanup()
    {
        m_link.abort();
        m_host.reset();
    }

    void requestsArriveInPiecesOrTogether()
    {
        // Byte-by-byte arrival is the frame cutter's own test; here three requests in one write, with a
        // request for another panel and noise between them.
        openLink();
        m_link.write("%RC12AB007**\r%RC12AB008**\rnoise%%**%EM12AB007**\r%RC12AB007**\r");
        QCOMPARE(readBytes(m_link, 17 + 13 + 17), QByteArray("$RC12AB00700001**$EM12AB007O**$RC12AB00700001**"));
        QCOMPARE(m_panel->requestCount("RC"), 2);
        QCOMPARE(m_host->openConnections(7), 1);
    }

    void slowAnswersKeepTheirOrder()
    {
        openLink();
        SimFault fault;
        fault.mode = SimFault::Mode::Slow;
        fault.delayMs = 300;
        fault.codes = { "EM" };
        m_panel->setFault(fault);
        m_link.write("%EM12AB007**\r%RC12AB007**\r");
        // The quick answer waits behind the slow one.
        QCOMPARE(readBytes(m_link, 13 + 17), QByteArray("$EM12AB007O**$RC12AB00700001**"));
    }

    void droppedLinksAndFloods()
    {
        openLink();
        SimFault fault;
        fault.mode = SimFault::Mode::Drop;
        fault.remaining = 1;
        m_panel->setFault(fault);
        m_link.write("%RC12AB007**\r");
        QVERIFY(m_link.state() == QAbstractSocket::UnconnectedState || m_link.waitForDisconnected(2000));

        // A flood without a frame end is the frame cutter's test. The station may drop every link on
        // demand (once the panel has taken this one: it has answered on it).
        openLink();
        m_link.write("%RC12AB007**\r");
        QCOMPARE(readBytes(m_link, 17), QByteArray("$RC12AB00700001**"));
        m_panel->dropConnections();
        QVERIFY(m_link.state() == QAbstractSocket::UnconnectedState || m_link.waitForDisconnected(2000));
    }

    void pushLinkMeetingItselfIsSeen()
    {
        // Bound to a port, then connected to that same port: the socket meets itself.
        QTcpSocket self;
        QVERIFY(self.bind(QHostAddress::LocalHost, 0));
        self.connectToHost(QHostAddress::LocalHost, self.localPort());
        QVERIFY(self.waitForConnected(5000));
        QCOMPARE(self.peerPort(), self.localPort());
        QVERIFY(SimPushClient::isSelfConnected(self));
        // Ordinary connections are not taken for it: pushes reach the station in the crash and
        // service tests.
    }

    void controlPortDrivesPanels()
    {
        QTcpSocket control;
        control.connectToHost(QHostAddress::LocalHost, m_host->controlPort());
        QVERIFY(control.waitForConnected(2000));
        const auto ask = [&control](const QByteArray& line) {
            control.write(line + '\n');
            return readLine(control);
        };
        QVERIFY(ask("help").startsWith("OK help panels add fault delay card"));
        QVERIFY(ask("panels").startsWith("OK 1; 7:12AB:"));
        QCOMPARE(ask("user 7 5 5005 1"), QByteArray("OK"));
        QCOMPARE(ask("card 7 1 5005"), QByteArray("OK code=0 user=5 result=denied"));
        QCOMPARE(ask("group 7 1 1000"), QByteArray("OK"));
        QCOMPARE(ask("card 7 1 5005"), QByteArray("OK code=1 user=5 result=granted"));
        QCOMPARE(ask("card 7 1 777"), QByteArray("OK code=4 user=0 result=unknown-card"));
        QCOMPARE(ask("records 7"), QByteArray("OK records=3 capacity=40000"));
        QCOMPARE(ask("seed 7 6"), QByteArray("OK records=9"));
        QCOMPARE(ask("erase 7"), QByteArray("OK"));
        QVERIFY(ask("getuser 7 5").startsWith("OK 0000500000050050000000001"));
        QCOMPARE(ask("getuser 7 6"), QByteArray("OK none"));
        // A slow panel answers in order.
        QCOMPARE(ask("delay 7 60:20"), QByteArray("OK delay=60:20"));
        QCOMPARE(ask("delay 7 x"), QByteArray("ERR usage: delay N|all MS[:JITTER]"));
        QCOMPARE(m_panel->answerDelay(), qMakePair(60, 20));
        openLink();
        m_link.write("%RC12AB007**\r%RC12AB007**\r");
        QCOMPARE(readBytes(m_link, 17 + 17), QByteArray("$RC12AB00700001**$RC12AB00700001**"));
        QCOMPARE(ask("delay all 0"), QByteArray("OK delay=0:0"));
        m_panel->resetRequestCounts();
        QCOMPARE(ask("fault all silent count=1 codes=RC"), QByteArray("OK silent count=1 codes=RC"));
        QVERIFY(ask("state 7").contains("users=1 groups=1"));
        QCOMPARE(ask("add 9 ABCD 0").left(10), QByteArray("OK 9:ABCD:"));
        QVERIFY(ask("add 9 ABCD 0").startsWith("ERR"));
        QVERIFY(ask("card 7 9 5005").startsWith("ERR"));
        QVERIFY(ask("card 12 1 5005").startsWith("ERR no such panel"));
        QVERIFY(ask("nonsense 7").startsWith("ERR"));
        QVERIFY(ask(QByteArray(5000, 'x')).startsWith("ERR"));
        QCOMPARE(ask("requests 7"), QByteArray("OK total=0"));

        // Random cards at a set rate, until stopped: none come while a slow answer is awaited after.
        QCOMPARE(ask("rate 7 500"), QByteArray("OK"));
        QTRY_VERIFY(m_panel->recordCount() >= 20);
        QCOMPARE(ask("rate 7 0"), QByteArray("OK"));
        const int stopped = m_panel->recordCount();
        QCOMPARE(ask("delay 7 60"), QByteArray("OK delay=60:0"));
        m_link.write("%UR12AB007**\r");
        QVERIFY(readBytes(m_link, 27).startsWith("$UR12AB007"));
        QCOMPARE(m_panel->recordCount(), stopped);
    }

    void commandLineAndPanelsFile()
    {
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("panels.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("# two panels\n1 12AB 5001\n\n2 00ff 5002 127.0.0.1:6100  # own push\n");
        file.close();

        SimCommandLine line;
        QString error;
        const QString options
            = QStringLiteral(" --push 127.0.0.1:6000 --panel 3:1:0 --status-port off --control-port 7000 "
                             "--rate 2.5 --answer-delay 20:5");
        QVERIFY2(line.parse(QString(QStringLiteral("--panels-file ") + file.fileName() + options).split(u' '), &error),
                 qPrintable(error));
        QCOMPARE(line.panels.size(), 3);
        QCOMPARE(line.panels[0].serial, 0x12AB);
        QCOMPARE(line.panels[0].pushPort, quint16(6000));
        QCOMPARE(line.panels[1].serial, 0xFF);
        QCOMPARE(line.panels[1].pushPort, quint16(6100));
        QCOMPARE(line.host.statusPort, -1);
        QCOMPARE(line.host.controlPort, 7000);
        QCOMPARE(line.rate, 2.5);
        QCOMPARE(line.answerDelayMs, 20);
        QCOMPARE(line.answerJitterMs, 5);

        for (const QString& arguments :
             QStringList{ QStringLiteral("--panel 1:12AB5:5000"), QStringLiteral("--panel 0:12AB:5000"),
                          QStringLiteral("--panel 1:12AB:5000 --panel 1:12AC:5001"),
                          QStringLiteral("--status-port 70000"), QStringLiteral("--bind nowhere"),
                          QString(QStringLiteral("--panels-file ") + dir.filePath(QStringLiteral("missing.txt"))),
                          QStringLiteral("--frobnicate"), QStringLiteral("--answer-delay 20:x") }) {
            SimCommandLine wrong;
            error.clear();
            QVERIFY2(!wrong.parse(arguments.split(u' '), &error) && !error.isEmpty(), qPrintable(arguments));
        }
    }

private:
    std::unique_ptr<SimulatorHost> m_host;
    SimPanel* m_panel = nullptr;
    QTcpSocket m_link;

    void openLink()
    {
        m_link.connectToHost(QHostAddress::LocalHost, m_panel->port());
        QVERIFY(m_link.waitForConnected(2000));
    }
};

QTEST_GUILESS_MAIN(SimulatorHostTest)
#include "SimulatorHostTest.moc"
