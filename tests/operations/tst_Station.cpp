// The station object: nothing of it runs until asked, and stopping it loses nothing: passages
// that arrived live are stored, and the job on the worker ends before the worker goes.

#include "operations/live/StatusListener.h"
#include "operations/station/Station.h"
#include "support/StationFixture.h"

#include <QTest>
#include <QThread>
#include <atomic>

using namespace Qt::StringLiterals;

class StationTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingRunsUntilAskedAndStopStoresWhatArrivedAndWaitsForTheJob()
    {
        StationFixture f;
        QVERIFY2(f.isReady(), qPrintable(f.error()));
        Station& station = f.station();
        QVERIFY(!station.worker().isRunning() && !station.live().isRunning());
        QVERIFY(!station.backfill() && !station.statusListener().isListening());
        // Without a worker an operator's job is not taken.
        QCOMPARE(station.jobs().run([](PanelLink&, Database&) {}), PanelJobs::Start::NotRunning);
        QVERIFY(!station.jobs().busy());

        f.listenOnFreePort();
        // Passages wait in the batch: only the stop commits them.
        station.network().live.batchIntervalMs = 3600000;
        station.network().live.batchRows = 1000;
        station.network().backfill = false;
        QString error;
        QVERIFY2(station.startWorker(&error), qPrintable(error));
        QVERIFY2(station.startLive(&error), qPrintable(error));
        SimPanel* panel = f.addPushingPanel(3);
        QVERIFY(panel);
        for (int i = 0; i < 5; ++i)
            panel->presentCard(1 + i % 4, 900000 + i);
        QTRY_COMPARE(station.live().counters().passagesReceived, 5);
        QCOMPARE(f.storedPassages(), 0);

        std::atomic<bool> ended{ false };
        const auto slowJob = [&](PanelLink&, Database&) {
            QThread::msleep(50);
            ended = true;
        };
        QCOMPARE(station.jobs().run(slowJob), PanelJobs::Start::Started);
        QVERIFY(station.jobs().busy());
        station.stop();
        QVERIFY(ended.load());
        QVERIFY(!station.jobs().busy() && !station.worker().isRunning() && !station.live().isRunning());
        QCOMPARE(f.storedPassages(), 5);
    }
};

QTEST_MAIN(StationTest)
#include "tst_Station.moc"
