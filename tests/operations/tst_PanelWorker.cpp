#include "operations/panels/PanelWorker.h"
#include "support/TestDatabases.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

// The worker runs one job at a time on its own thread with its own connection.
class PanelWorkerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsOneJobAtATimeOnItsOwnThread();
};

void PanelWorkerTest::runsOneJobAtATimeOnItsOwnThread()
{
    TestDatabases dbs;
    Database db;
    QVERIFY(dbs.openFresh(TestDatabases::SQLite, db));
    PanelWorker worker;
    QVERIFY(!worker.submit([](PanelLink&, Database&) {}));
    QVERIFY(worker.start(db));
    QSignalSpy finished(&worker, &PanelWorker::finished);

    QSemaphore release;
    QThread* jobThread = nullptr;
    QString connection;
    int users = -1;
    QVERIFY(worker.submit([&](PanelLink&, Database& own) {
        jobThread = QThread::currentThread();
        connection = own.connectionName();
        users = own.scalar(u"SELECT COUNT(*) FROM \"Users\""_s).toInt();
        release.acquire();
    }));
    QVERIFY(worker.busy());
    QVERIFY(!worker.submit([](PanelLink&, Database&) {}));
    release.release();
    // Counted rather than waited for: the job may end before the wait would begin.
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 10000);
    QVERIFY(!worker.busy());
    QVERIFY(jobThread && jobThread != QThread::currentThread());
    QVERIFY(connection != db.connectionName());
    QCOMPARE(users, 0);
    QVERIFY(worker.submit([](PanelLink&, Database&) {}));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 2, 10000);
    worker.stop();
    QVERIFY(!worker.isRunning());
    db.close();
}

QTEST_GUILESS_MAIN(PanelWorkerTest)
#include "tst_PanelWorker.moc"
