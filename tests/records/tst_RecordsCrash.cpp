// The command line killed outright while it stores passages, then started again: every record
// the panel held ends up stored exactly once. Runs kx410ctl and kx410-panelsim as processes.
#include "protocol/PanelLink.h"
#include "protocol/RecordDownload.h"
#include "store/Database.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString Password = u"1234"_s;

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

class RecordsCrashTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void pullKilledDuringImport();
    void liveKilledWhileStoring();

private:
    QStringList station(const QStringList& words) const;
    int runStation(const QStringList& words, int timeoutMs = 120000);
    QString control(const QString& command);
    // (user, second) of every record the panel holds with a user, as a multiset.
    QHash<QPair<int, qint64>, int> panelRecords();
    QHash<QPair<int, qint64>, int> storedRecords();

    QTemporaryDir m_dir;
    QProcess m_sim;
    quint16 m_panelPort = 0;
    quint16 m_controlPort = 0;
    quint16 m_pushPort = 0;
    QString m_dbPath;
};

QStringList RecordsCrashTest::station(const QStringList& words) const
{
    return QStringList{ u"--data-dir"_s, m_dir.path(), u"--yes"_s, u"--admin-password"_s, Password } + words;
}

int RecordsCrashTest::runStation(const QStringList& words, int timeoutMs)
{
    QProcess p;
    p.start(QStringLiteral(KX_CTL), station(words));
    if (!p.waitForFinished(timeoutMs))
        return -1;
    if (p.exitCode() != 0)
        qWarning() << p.readAllStandardError();
    return p.exitCode();
}

QString RecordsCrashTest::control(const QString& command)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, m_controlPort);
    if (!socket.waitForConnected(5000))
        return {};
    socket.write(command.toUtf8() + '\n');
    QByteArray answer;
    while (!answer.contains('\n') && socket.waitForReadyRead(10000))
        answer += socket.readAll();
    return QString::fromUtf8(answer).trimmed();
}

void RecordsCrashTest::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QProcess setup;
    setup.start(QStringLiteral(KX_CTL),
                { u"--data-dir"_s, m_dir.path(), u"--admin-password"_s, Password, u"setup"_s, u"--server"_s });
    QVERIFY(setup.waitForFinished(60000));
    QCOMPARE(setup.exitCode(), 0);
    m_dbPath = m_dir.filePath(u"KX410_DB200.db"_s);

    m_panelPort = freePort();
    m_controlPort = freePort();
    m_pushPort = freePort();
    m_sim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_sim.start(QStringLiteral(KX_SIM),
                { u"--panel"_s, u"1:1001:%1:127.0.0.1:%2"_s.arg(m_panelPort).arg(m_pushPort), u"--status-port"_s,
                  u"off"_s, u"--search-port"_s, u"off"_s, u"--control-port"_s, QString::number(m_controlPort),
                  u"--seed-users"_s, u"5000"_s });
    QVERIFY(m_sim.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(control(u"panels"_s).startsWith(u"OK"_s), 10000);

    Database db;
    QString error;
    QVERIFY2(db.open(m_dbPath, Database::OpenMode::ExistingOnly, &error), qPrintable(error));
    QVERIFY2(db.insert(u"PanelSettings"_s,
                       { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel IP1"_s, u"Panel IP2"_s, u"Panel IP3"_s,
                         u"Panel IP4"_s, u"Panel TCP Port"_s, u"Panel Remote TCP Port"_s },
                       { 1, 1, 0x1001, 127, 0, 0, 1, m_panelPort, m_pushPort }, &error),
             qPrintable(error));
    for (int id = 1; id <= 5000; ++id)
        db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Kullanici Tipi"_s }, { id, 100000 + id, 0 });
}

void RecordsCrashTest::cleanupTestCase()
{
    m_sim.kill();
    m_sim.waitForFinished();
}

QHash<QPair<int, qint64>, int> RecordsCrashTest::panelRecords()
{
    PanelLink link;
    link.ConnectPanel(u"127.0.0.1"_s, m_panelPort);
    const RecordDownload::Result result = DownloadRecords(link, PanelAddress(1, 0x1001), {});
    QHash<QPair<int, qint64>, int> keys;
    for (const DownloadedRecord& r : result.records)
        ++keys[{ r.userId, QDateTime(r.time.date(), r.time.time(), Qt::UTC).toSecsSinceEpoch() }];
    return keys;
}

QHash<QPair<int, qint64>, int> RecordsCrashTest::storedRecords()
{
    Database db;
    db.open(m_dbPath, Database::OpenMode::ExistingOnly);
    QHash<QPair<int, qint64>, int> keys;
    QSqlQuery q = db.query(u"SELECT \"ID\", \"Tarih\" FROM \"AccessDatas\" WHERE \"Panel ID\" = 1 AND \"ID\" > 0"_s);
    while (q.next()) {
        const QDateTime at = Database::dateTime(q.value(1));
        ++keys[{ q.value(0).toInt(), QDateTime(at.date(), at.time(), Qt::UTC).toSecsSinceEpoch() }];
    }
    return keys;
}

void RecordsCrashTest::pullKilledDuringImport()
{
    QVERIFY(control(u"seed 1 40000"_s).startsWith(u"OK"_s));
    const QHash<QPair<int, qint64>, int> held = panelRecords();

    // Killed while downloading, between the download and the import, and twice once the rows are
    // being added (each stage as the command line reports it).
    int killedWhileAdding = 0;
    for (const QString& stage : { u"Alınıyor"_s, u"Düzenlendi"_s, u"Ekleniyor"_s, u"Ekleniyor"_s }) {
        QProcess pull;
        pull.start(QStringLiteral(KX_CTL), station({ u"records"_s, u"pull"_s, u"--panel"_s, u"1"_s, u"--erase"_s }));
        QVERIFY(pull.waitForStarted());
        QByteArray err;
        while (pull.state() == QProcess::Running && !QString::fromUtf8(err).contains(stage)) {
            pull.waitForReadyRead(100);
            err += pull.readAllStandardError();
        }
        if (pull.state() == QProcess::Running && stage == u"Ekleniyor"_s)
            ++killedWhileAdding;
        pull.kill();
        pull.waitForFinished();
        QCOMPARE(storedRecords().size() <= 40000, true);
    }
    QVERIFY(killedWhileAdding > 0);
    QCOMPARE(runStation({ u"records"_s, u"pull"_s, u"--panel"_s, u"1"_s, u"--erase"_s }), 0);
    QCOMPARE(storedRecords(), held);
    QVERIFY(control(u"records 1"_s).startsWith(u"OK records=0"_s));
}

void RecordsCrashTest::liveKilledWhileStoring()
{
    Database db;
    QVERIFY(db.open(m_dbPath, Database::OpenMode::ExistingOnly));
    QVERIFY(db.exec(u"DELETE FROM \"AccessDatas\""_s));
    db.close();
    QVERIFY(control(u"erase 1"_s).startsWith(u"OK"_s));

    const QStringList liveWords{ u"live"_s, u"--port"_s, QString::number(m_pushPort), u"--no-udp"_s };
    QProcess live;
    live.setProcessChannelMode(QProcess::MergedChannels);
    live.start(QStringLiteral(KX_CTL), station(liveWords));
    QVERIFY(live.waitForStarted());
    QVERIFY(control(u"rate 1 150"_s).startsWith(u"OK"_s));
    for (int round = 0; round < 3; ++round) {
        // Killed while it stores; passages go on while it starts again and nobody listens.
        const qsizetype before = storedRecords().size();
        QTRY_VERIFY_WITH_TIMEOUT(storedRecords().size() > before + 100, 30000);
        live.kill();
        live.waitForFinished();
        live.start(QStringLiteral(KX_CTL), station(liveWords));
        QVERIFY(live.waitForStarted());
    }
    QVERIFY(control(u"rate 1 0"_s).startsWith(u"OK"_s));
    // Every passage the panel made reaches the station before it stops.
    QTRY_VERIFY_WITH_TIMEOUT(storedRecords().size() == panelRecords().size(), 60000);
    live.terminate(); // a clean stop stores what has arrived
    QVERIFY(live.waitForFinished(30000));
    QCOMPARE(live.exitCode(), 0);

    const QHash<QPair<int, qint64>, int> made = panelRecords();
    const QHash<QPair<int, qint64>, int> stored = storedRecords();
    int missing = 0;
    int doubled = 0;
    for (auto it = made.cbegin(); it != made.cend(); ++it) {
        missing += qMax(0, it.value() - stored.value(it.key()));
        doubled += qMax(0, stored.value(it.key()) - it.value());
    }
    QCOMPARE(missing, 0);
    QCOMPARE(doubled, 0);
    QCOMPARE(stored.size(), made.size());
}

QTEST_GUILESS_MAIN(RecordsCrashTest)
#include "tst_RecordsCrash.moc"
