#include "operations/live/LiveMonitor.h"
#include "operations/panels/PanelRoster.h"
#include "operations/records/RecordBackfill.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "support/TestDatabases.h"

#include <QNetworkDatagram>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

namespace {

// "%CD" frame: panel, door, code, direction digit, user, card, ddMMyyhhmmss.
QByteArray cd(int panel, int door, int code, int direction, int user, qint64 card, const QByteArray& stamp)
{
    return "%CD" + QByteArray::number(panel).rightJustified(3, '0') + QByteArray::number(door)
        + QByteArray::number(code) + QByteArray::number(direction) + QByteArray::number(user).rightJustified(5, '0')
        + QByteArray::number(card).rightJustified(10, '0') + stamp + "**";
}

QByteArray cms(int panel, const QByteArray& doors, char zone1, char zone2, char fire)
{
    QByteArray payload
        = QByteArray::number(panel).rightJustified(3, '0') + doors + zone1 + "000" + zone2 + "00000" + fire + "0000";
    return "%CMS" + payload + "**";
}

} // namespace

class LiveMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void framesSurviveAnyCutAndStoreInOrder_data() { TestDatabases::addEngineRows(); }
    void framesSurviveAnyCutAndStoreInOrder();
    void hostileClientsDoNotStopOthers();
    void statusByStreamAndDatagramReachesDoorTable();
    void switchesZonesTypesAndCentury();
    void junkGivesWayToPanels();
    void silentConnectionsAreClosed();

private:
    bool startMonitor(TestDatabases::Engine engine = TestDatabases::SQLite);
    bool listen();
    QTcpSocket* connectClient();
    // The roster's only entry: the panel whose status frames are taken.
    void listPanel(qint32 number, quint16 serial);
    int rows() { return m_db->scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(); }

    std::unique_ptr<TestDatabases> m_dbs;
    std::unique_ptr<Database> m_db;
    std::unique_ptr<PanelRoster> m_roster;
    std::unique_ptr<LiveMonitor> m_monitor;
    ManualClock m_clock{ QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)) };
    LiveSettings m_settings;
    QList<QTcpSocket*> m_clients;
};

void LiveMonitorTest::init()
{
    m_settings = LiveSettings();
    m_settings.listenAddress = QHostAddress(QHostAddress::LocalHost);
    m_settings.tcpPort = 0;
    m_settings.udpPort = 0;
    m_settings.batchRows = 3;
    m_dbs = std::make_unique<TestDatabases>();
    m_db = std::make_unique<Database>();
    m_roster = std::make_unique<PanelRoster>();
}

void LiveMonitorTest::cleanup()
{
    qDeleteAll(m_clients);
    m_clients.clear();
    m_monitor.reset();
    m_roster.reset();
    m_db.reset();
    m_dbs.reset();
}

bool LiveMonitorTest::startMonitor(TestDatabases::Engine engine)
{
    QString error;
    const bool opened = m_dbs->openFresh(engine, *m_db, true, &error);
    if (!opened)
        qWarning() << error;
    return opened && listen();
}

bool LiveMonitorTest::listen()
{
    QString error;
    m_monitor = std::make_unique<LiveMonitor>(m_clock);
    const bool started = m_monitor->start(*m_db, m_settings, m_roster.get(), &error);
    if (!started)
        qWarning() << error;
    return started;
}

QTcpSocket* LiveMonitorTest::connectClient()
{
    auto* socket = new QTcpSocket;
    m_clients << socket;
    socket->connectToHost(QHostAddress::LocalHost, m_monitor->tcpPort());
    socket->waitForConnected(5000);
    return socket;
}

void LiveMonitorTest::listPanel(qint32 number, quint16 serial)
{
    PanelEntry entry;
    entry.position = 1;
    entry.panelNumber = number;
    entry.serial = serial;
    entry.ip = u"127.0.0.1"_s;
    entry.port = 1;
    m_roster->setEntries({ entry });
}

void LiveMonitorTest::framesSurviveAnyCutAndStoreInOrder()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    QVERIFY(startMonitor(TestDatabases::Engine(engine)));
    QSignalSpy stored(m_monitor.get(), &LiveMonitor::passagesStored);
    QSignalSpy connected(m_monitor.get(), &LiveMonitor::panelConnected);
    QTcpSocket* client = connectClient();

    const QByteArray d = cd(7, 4, 1, 1, 10, 444, "310116090506");
    // Three frames and the start of a fourth in one write (how pieces that arrive apart are
    // joined is the frame cutter's own test).
    client->write(cd(7, 2, 1, 1, 7, 12345, "310116090503") + "\r\n" + cd(7, 1, 1, 0, 8, 222, "310116090504")
                  + cd(7, 3, 1, 1, 9, 333, "310116090505") + d.left(10));
    client->flush();
    QTRY_COMPARE(rows(), 3);
    client->write(d.mid(10));
    // A record cut off by the end of the connection is dropped; the ones before it are kept.
    client->write(cd(7, 1, 1, 1, 11, 555, "310116090507").left(20));
    client->flush();
    client->disconnectFromHost();
    m_monitor->flush();
    QTRY_COMPARE(rows(), 4);
    QCOMPARE(connected.first().first().toInt(), 7);

    QList<RecordRow> signalled;
    QTRY_VERIFY([&] {
        signalled.clear();
        for (const auto& args : stored)
            signalled += args.first().value<QList<RecordRow>>();
        return signalled.size() == 4;
    }());
    // The rows signalled are the rows stored, in the order they came.
    QList<qint32> users;
    for (const RecordRow& row : signalled) {
        users << row.userId;
        QCOMPARE(m_db->scalar(u"SELECT \"ID\" FROM \"AccessDatas\" WHERE \"Kayit No\" = ?"_s, { row.recordNo }).toInt(),
                 row.userId);
    }
    QCOMPARE(users, (QList<qint32>{ 7, 8, 9, 10 }));
    // Arrival is the station clock's time, not the panel's.
    QCOMPARE(m_monitor->lastArrival(7), m_clock.now());
    QVERIFY(!m_monitor->lastArrival(8).isValid());
}

void LiveMonitorTest::hostileClientsDoNotStopOthers()
{
    QVERIFY(startMonitor());
    connectClient(); // one that never says anything
    QTcpSocket* noise = connectClient();
    QTcpSocket* broken = connectClient();
    QTcpSocket* good = connectClient();

    QByteArray junk(256 * 1024, 'x');
    for (int i = 0; i < junk.size(); i += 97)
        junk[i] = char(i % 251);
    noise->write(junk);
    // Frames that never end, wrong letters, wrong lengths, letters in number fields, a panel 0.
    QByteArray bad;
    for (int i = 0; i < 200; ++i)
        bad += "%CD0072110000700000123453101";
    bad += "%XY123**%CD007**" + cd(7, 1, 1, 1, 7, 1, "3101160905AB") + cd(0, 1, 1, 1, 7, 1, "310116090503")
        + "%CD00721100007000001234531011609050399**";
    broken->write(bad);
    noise->flush();
    broken->flush();
    good->write(cd(9, 1, 1, 1, 42, 4242, "310116100000"));
    good->flush();
    QTRY_COMPARE(rows(), 1);
    m_monitor->flush();
    QCOMPARE(m_db->scalar(u"SELECT \"ID\" FROM \"AccessDatas\""_s).toInt(), 42);
    QVERIFY(m_monitor->counters().framesDropped > 0);
    // The same noisy connection still serves a good frame afterwards.
    noise->write("%" + cd(9, 1, 1, 1, 43, 4343, "310116100001"));
    noise->flush();
    QTRY_COMPARE(rows(), 2);
}

void LiveMonitorTest::statusByStreamAndDatagramReachesDoorTable()
{
    QVERIFY(startMonitor());
    listPanel(7, 0x12AB);
    QSignalSpy changes(m_monitor.get(), &LiveMonitor::statusChanged);
    QTcpSocket* client = connectClient();

    client->write(cms(7, "11010100", '0', '0', '1') + cms(99, "11111111", '0', '0', '0')
                  + cms(7, "00000000", '0', '1', '0') + cms(7, "01010101", '0', '0', '0'));
    client->flush();
    QTRY_COMPARE(changes.size(), 3);
    const auto change = [&](int i) { return changes.at(i).first().value<LiveStatusChange>(); };
    QCOMPARE(change(0).message().turkish(), u"Yangın"_s);
    QCOMPARE(change(1).message().turkish(), u"Dolu"_s);
    QVERIFY(change(2).message().isEmpty());
    QCOMPARE(m_roster->doorStatus().cell(1, 4).connectionState, 1);

    // By datagram: a passage, then the status and an answer to the status request, whose digits
    // end in the table.
    QUdpSocket udp;
    const QHostAddress to(QHostAddress::LocalHost);
    udp.writeDatagram(cd(7, 1, 1, 1, 7, 70, "310116090503") + cms(7, "10101010", '0', '0', '0'), to,
                      m_monitor->udpPort());
    udp.writeDatagram("$GMS12AB007" + QByteArray("01010101") + "000000000000000" + "**", to, m_monitor->udpPort());
    QTRY_COMPARE(rows(), 1);
    QTRY_COMPARE(changes.size(), 5);
    QCOMPARE(m_roster->doorStatus().cell(1, 1).doorState, 0);
}

void LiveMonitorTest::switchesZonesTypesAndCentury()
{
    QVERIFY(startMonitor());
    QString error;
    QVERIFY(m_db->insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s }, { 5, 500 }, &error));
    QTcpSocket* client = connectClient();

    // Every switch on: only the granted passage (and other codes) stay.
    QVERIFY(m_db->exec(u"UPDATE \"ProgInit\" SET \"LiveAPBInvalid\" = 1, \"LiveDeniedInvalid\" = 1, "
                       u"\"LiveUnknownInvalid\" = 1"_s));
    m_monitor->reloadRules();
    client->write(cd(4, 1, 0, 1, 5, 500, "010399090000") + cd(4, 1, 2, 1, 5, 500, "010399090001")
                  + cd(4, 1, 4, 1, 0, 777, "010399090002") + cd(4, 3, 1, 2, 5, 500, "010399090003")
                  + cd(4, 1, 8, 1, 0, 0, "010399090004"));
    client->flush();
    QTRY_COMPARE(rows(), 2);
    QTRY_COMPARE(m_monitor->counters().passagesFiltered, 3);

    // Zones, user type and visit are the passage store's own test; here the century.
    QSqlQuery q = m_db->query(u"SELECT \"Kod\", \"Tarih\" FROM \"AccessDatas\" ORDER BY \"Kayit No\""_s);
    QVERIFY(q.next());
    QCOMPARE(q.value(0).toInt(), 1);
    QCOMPARE(Database::dateTime(q.value(1)), QDateTime(QDate(2099, 3, 1), QTime(9, 0, 3)));
    QVERIFY(q.next());
    QCOMPARE(q.value(0).toInt(), 8);
    q.finish(); // an open statement would hold back the next change

    // Switches off again: refused passages are kept.
    QVERIFY(m_db->exec(u"UPDATE \"ProgInit\" SET \"LiveAPBInvalid\" = 0, \"LiveDeniedInvalid\" = 0, "
                       u"\"LiveUnknownInvalid\" = 0"_s));
    m_monitor->reloadRules();
    client->write(cd(4, 1, 0, 1, 5, 500, "010399100000") + cd(4, 1, 4, 1, 0, 777, "010399100001"));
    client->flush();
    QTRY_COMPARE(rows(), 4);
}

void LiveMonitorTest::junkGivesWayToPanels()
{
    // Few places and no time-out: only making room can let a panel in.
    m_settings.maxConnections = 6;
    m_settings.unidentifiedTimeoutMs = 0;
    QVERIFY(startMonitor());
    // Clients that sent an empty frame, some of them then half a frame or noise with a frame of
    // unknown letters. Returns the whole frames each one sent.
    const auto junk = [&](int i) {
        QTcpSocket* client = connectClient();
        const QByteArray tails[] = { "", "%CD00710", "hello%XY**" };
        client->write("%**" + tails[i % 3]);
        client->flush();
        return i % 3 == 2 ? 2 : 1;
    };
    int junkFrames = 0;
    for (int i = 0; i < 6; ++i)
        junkFrames += junk(i);
    QTRY_COMPARE(m_monitor->counters().connections, 6);
    QTRY_COMPARE(m_monitor->counters().framesReceived, junkFrames);
    QSignalSpy connected(m_monitor.get(), &LiveMonitor::panelConnected);
    QSignalSpy disconnected(m_monitor.get(), &LiveMonitor::panelDisconnected);

    QTcpSocket* panel = connectClient();
    panel->write(cd(7, 1, 1, 1, 7, 700, "310116090503") + cd(7, 2, 1, 1, 8, 800, "310116090504"));
    panel->flush();
    QTRY_COMPARE(rows(), 2);
    QCOMPARE(m_monitor->counters().connectionsEvicted, 1);

    // More clients than places come after the panel: they push each other out, never the panel,
    // and none of that looks like a panel going away.
    for (int i = 0; i < 8; ++i)
        junk(i);
    QTRY_COMPARE(m_monitor->counters().connectionsEvicted, 9);
    QCOMPARE(m_monitor->counters().connections, 6);
    panel->write(cd(7, 3, 1, 1, 9, 900, "310116090505"));
    panel->flush();
    QTRY_COMPARE(rows(), 3);
    QCOMPARE(connected.size(), 1);
    QVERIFY(disconnected.isEmpty());
    QCOMPARE(m_monitor->connectedPanels(), QList<qint32>{ 7 });
}

void LiveMonitorTest::silentConnectionsAreClosed()
{
    m_settings.unidentifiedTimeoutMs = 1000;
    QVERIFY(startMonitor());
    listPanel(7, 0x12AB);
    // The back-fill only counts what it is asked to fetch.
    int fetches = 0;
    RecordBackfill backfill(*m_roster, m_clock, [&fetches](RecordBackfill::Job) { return ++fetches > 0; });
    backfill.watch(*m_monitor);
    QSignalSpy disconnected(m_monitor.get(), &LiveMonitor::panelDisconnected);

    QTcpSocket* idle = connectClient();
    QTcpSocket* garbage = connectClient();
    QTcpSocket* panel = connectClient();
    panel->write(cd(7, 1, 1, 1, 7, 700, "310116090503"));
    panel->flush();
    QTRY_COMPARE(rows(), 1);
    // Sending on and on without one valid frame does not keep a connection open.
    const auto closedWhileNoisy = [garbage] {
        if (garbage->state() == QAbstractSocket::ConnectedState) {
            garbage->write("%**x%CD0071");
            garbage->flush();
        }
        return garbage->state() == QAbstractSocket::UnconnectedState;
    };
    QTRY_VERIFY_WITH_TIMEOUT(closedWhileNoisy(), 20000);
    QTRY_VERIFY_WITH_TIMEOUT(idle->state() == QAbstractSocket::UnconnectedState, 20000);
    QCOMPARE(m_monitor->counters().connectionsTimedOut, 2);
    // The panel, silent as long, is kept by default and still heard.
    QCOMPARE(panel->state(), QAbstractSocket::ConnectedState);
    panel->write(cd(7, 2, 1, 1, 8, 800, "310116090504"));
    panel->flush();
    QTRY_COMPARE(rows(), 2);
    QVERIFY(disconnected.isEmpty());
    QCOMPARE(fetches, 0);

    // Told to, the station closes a silent panel's connection too: a drop like any other, so the
    // panel is back-filled once when it comes back.
    m_monitor.reset();
    m_settings.unidentifiedTimeoutMs = 0;
    m_settings.identifiedTimeoutMs = 300;
    QVERIFY(listen());
    backfill.watch(*m_monitor);
    QSignalSpy dropped(m_monitor.get(), &LiveMonitor::panelDisconnected);
    panel = connectClient();
    panel->write(cd(7, 3, 1, 1, 9, 900, "310116090505"));
    panel->flush();
    QTRY_COMPARE(rows(), 3);
    QTRY_VERIFY_WITH_TIMEOUT(panel->state() == QAbstractSocket::UnconnectedState, 20000);
    QTRY_COMPARE(dropped.size(), 1);
    QCOMPARE(dropped.first().first().toInt(), 7);
    QCOMPARE(fetches, 0);
    panel = connectClient();
    panel->write(cd(7, 4, 1, 1, 10, 1000, "310116090506"));
    panel->flush();
    QTRY_COMPARE(rows(), 4);
    QTRY_COMPARE(fetches, 1);
}

QTEST_GUILESS_MAIN(LiveMonitorTest)
#include "tst_LiveMonitor.moc"
