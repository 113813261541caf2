// kx410d as systemd runs it: a process on a server's data folder, its clock started a few seconds
// before the daily retrieval, with a simulated panel on loopback.

#include "CliSimSite.h"
#include "store/Database.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Deadline = 120000;

// A running kx410d whose log is collected as it comes.
class Daemon
{
public:
    void start(const QString& dataDir, const QStringList& extra)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        QObject::connect(&m_process, &QProcess::readyRead, &m_process,
                         [this] { m_log += QString::fromUtf8(m_process.readAll()); });
        m_process.start(QStringLiteral(KX410D_PATH),
                        QStringList{ u"--data-dir"_s, dataDir, u"--broadcast"_s, u"127.0.0.1"_s, u"--listen"_s,
                                     u"127.0.0.1"_s, u"--udp-port"_s, u"0"_s, u"--port"_s, u"0"_s }
                            + extra);
    }
    // Collects what is left and waits for the end; the exit code, or -1 after a crash.
    int finish()
    {
        if (!m_process.waitForFinished(Deadline))
            return -2;
        m_log += QString::fromUtf8(m_process.readAll());
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    QProcess& process() { return m_process; }
    const QString& log() const { return m_log; }

private:
    QProcess m_process;
    QString m_log;
};

int storedPassages(const QString& dataDir)
{
    Database db;
    if (!db.open(dataDir + u"/KX410_DB200.db"_s, Database::OpenMode::ExistingOnly))
        return -1;
    return db.scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toInt();
}

} // namespace

class ServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void runsTheDailyRetrievalAloneAndStopsWithNothingLost()
    {
        CliRunner cli;
        QVERIFY(cli.setUpServer());
        CliSimSite site(cli);
        QVERIFY2(site.isStarted(), qPrintable(site.error()));
        SimPanel* panel = site.addPanel(1, 0x2001);
        QVERIFY2(panel, qPrintable(site.error()));
        const CliRunner::Result r = cli.runAsAdmin("schedule set --receive on --receive-time 06:00:00");
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
        panel->seedRecords(25, QDateTime(QDate(2026, 3, 14), QTime(8, 0)));

        // Started some seconds before the retrieval time, so the start-up has time to finish.
        Daemon daemon;
        daemon.start(cli.dataDir(),
                     { u"--erase-after-retrieval"_s, u"--parallel"_s, u"4"_s, u"--give-up-after"_s, u"2"_s,
                       u"--start-at"_s, u"2026-03-16 05:59:45"_s });
        QTRY_VERIFY2_WITH_TIMEOUT(daemon.log().contains(u"started on"_s), qPrintable(daemon.log()), Deadline);

        // A second service on the folder refuses, and says why.
        Daemon second;
        second.start(cli.dataDir(), {});
        QCOMPARE_NE(second.finish(), 0);
        QVERIFY2(second.log().contains(u"already runs the daily schedule"_s), qPrintable(second.log()));

        // The retrieval stores every record once (the start's back-fill may have fetched them
        // already) and only then erases the panel.
        QTRY_VERIFY2_WITH_TIMEOUT(daemon.log().contains(u"daily retrieval ended"_s), qPrintable(daemon.log()),
                                  Deadline);
        QCOMPARE(panel->recordCount(), 0);

        // A live passage is stored too, and stays stored when the service is stopped.
        const QRegularExpressionMatch port
            = QRegularExpression(u"live monitor listening on TCP (\\d+)"_s).match(daemon.log());
        QVERIFY2(port.hasMatch(), qPrintable(daemon.log()));
        panel->setPushTarget(u"127.0.0.1"_s, static_cast<quint16>(port.captured(1).toUInt()));
        panel->presentCard(1, 777001);
        QTRY_COMPARE_WITH_TIMEOUT(storedPassages(cli.dataDir()), 26, Deadline);

        daemon.process().terminate();
        QCOMPARE(daemon.finish(), 0);
        QCOMPARE(storedPassages(cli.dataDir()), 26);

        // The folder's schedule is free again once the service has gone.
        Daemon third;
        third.start(cli.dataDir(), {});
        QTRY_VERIFY2_WITH_TIMEOUT(third.log().contains(u"started on"_s), qPrintable(third.log()), Deadline);
        third.process().terminate();
        QCOMPARE(third.finish(), 0);
    }

    void refusesAFolderThatIsNotAServer()
    {
        CliRunner cli;
        Daemon notSetUp;
        notSetUp.start(cli.dataDir(), {});
        QCOMPARE(notSetUp.finish(), 1);
        QVERIFY2(notSetUp.log().contains(u"not set up"_s), qPrintable(notSetUp.log()));

        // A client works on another station's database: its schedule is that station's.
        CliRunner server;
        QVERIFY(server.setUpServer());
        const CliRunner::Result r
            = cli.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, server.dataDir() + u"/KX410_DB200.db"_s });
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
        Daemon client;
        client.start(cli.dataDir(), {});
        QCOMPARE(client.finish(), 1);
        QVERIFY2(client.log().contains(u"client station"_s), qPrintable(client.log()));
    }
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "ServiceTest.moc"
