#include "operations/live/LiveMonitor.h"
#include "operations/panels/PanelWorker.h"
#include "operations/records/RecordBackfill.h"
#include "support/ReadyStation.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// A station that listens live and back-fills the gaps, against one simulated panel whose
// passages are all made by known users (so every one of them is also in the panel's memory).
class RecordBackfillTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gapsAreFilledExactlyOnce();

private:
    static void addUsers(StationFixture& f, SimPanel* panel, int count);
    static void expectPanelStoredOnce(StationFixture& f, SimPanel* panel);
};

void RecordBackfillTest::addUsers(StationFixture& f, SimPanel* panel, int count)
{
    panel->modify([count](SimPanelState& state) {
        SimGroup group;
        group.number = 1;
        group.doorAllowed = { true, true, true, true };
        state.groups.insert(1, group);
        for (int id = 1; id <= count; ++id) {
            SimUser user;
            user.id = id;
            user.card = 5000 + id;
            user.group = 1;
            state.putUser(user);
        }
    });
    for (int id = 1; id <= count; ++id)
        f.addUser(id, 5000 + id);
}

void RecordBackfillTest::expectPanelStoredOnce(StationFixture& f, SimPanel* panel)
{
    const QList<SimRecord> held = panel->records();
    QCOMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(), held.size());
    for (const SimRecord& r : held) {
        const QDateTime at(r.time.date(), r.time.time());
        QCOMPARE(f.db()
                     .scalar(u"SELECT COUNT(*) FROM \"AccessDatas\" WHERE \"ID\" = ? AND \"Tarih\" = ? "
                             u"AND \"Panel ID\" = 1"_s,
                             { r.userId, f.db().toSql(at) })
                     .toInt(),
                 1);
    }
}

void RecordBackfillTest::gapsAreFilledExactlyOnce()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    addUsers(f, panel, 40);

    LiveSettings settings;
    settings.listenAddress = QHostAddress(QHostAddress::LocalHost);
    settings.listenUdp = false;
    auto monitor = std::make_unique<LiveMonitor>(f.clock());
    QString error;
    QVERIFY2(monitor->start(f.db(), settings, &f.roster(), &error), qPrintable(error));
    const quint16 port = monitor->tcpPort();

    PanelWorker worker;
    PanelLink::Settings linkSettings;
    linkSettings.pacingMs = 0;
    QVERIFY2(worker.start(f.db(), linkSettings, &error), qPrintable(error));
    RecordBackfill backfill(f.roster(), f.clock(),
                            [&worker](RecordBackfill::Job job) { return worker.submit(std::move(job)); });
    backfill.setRetryIntervalMs(50);
    backfill.watch(*monitor);
    QSignalSpy fetched(&backfill, &RecordBackfill::panelFetched);

    int user = 0;
    const auto pass = [&] {
        ++user;
        panel->presentCard(1 + user % 4, 5000 + user);
    };
    panel->setPushTarget(u"127.0.0.1"_s, port);
    for (int i = 0; i < 5; ++i)
        pass();
    QTRY_COMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(), 5);
    QCOMPARE(monitor->connectedPanels(), QList<qint32>{ 1 });

    // The live link breaks (the next frame waits for a place nobody listens at), then the panel
    // is told to push nowhere: these passages reach the station only through its memory.
    panel->setPushTarget(u"127.0.0.1"_s, StationFixture::deadPort());
    pass();
    QTRY_VERIFY(monitor->connectedPanels().isEmpty());
    panel->setPushTarget(QString(), 0);
    for (int i = 0; i < 5; ++i)
        pass();
    panel->setPushTarget(u"127.0.0.1"_s, port);
    pass();
    QTRY_COMPARE(fetched.size(), 1);
    QTRY_VERIFY(backfill.isIdle());
    monitor->flush();
    QCOMPARE(panel->recordCount(), 12); // the back-fill never erases
    expectPanelStoredOnce(f, panel);

    // The station stops; passages go on; at start-up every panel is back-filled while the
    // panel's queued frames arrive live as well.
    monitor.reset();
    for (int i = 0; i < 6; ++i)
        pass();
    monitor = std::make_unique<LiveMonitor>(f.clock());
    settings.tcpPort = port;
    QVERIFY2(monitor->start(f.db(), settings, &f.roster(), &error), qPrintable(error));
    backfill.watch(*monitor);
    backfill.requestAll();
    QTRY_COMPARE(fetched.size(), 2);
    pass();
    QTRY_COMPARE(monitor->connectedPanels(), QList<qint32>{ 1 });
    QTRY_COMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\""_s).toInt(), 19);
    // The six passages queued while the station was down and the last one all arrive live too.
    QTRY_COMPARE(monitor->counters().passagesReceived, 7);
    monitor->flush();
    expectPanelStoredOnce(f, panel);
    monitor.reset();
    worker.stop();
}

QTEST_GUILESS_MAIN(RecordBackfillTest)
#include "tst_RecordBackfill.moc"
