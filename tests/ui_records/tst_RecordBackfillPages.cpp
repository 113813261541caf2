// The record pages fetching what the panels stored while nobody listened: at start-up and after a
// panel's pushed connection was lost and came back, every passage is stored once and the panel's
// memory is left as it was. The worker bridge's quiet path for such background jobs: nothing shown
// in the window, and an operator's job arriving meanwhile waits for it instead of being refused.

#include "operations/records/RecordBackfill.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/common/PanelTargetBox.h"
#include "ui/live/MonitorPage.h"
#include "ui/live/PanelLiveGrid.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/records/RecordPages.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTabWidget>
#include <QVBoxLayout>
#include <atomic>

using namespace Qt::StringLiterals;

namespace {
constexpr int kPanel = 4;
constexpr qint64 kFirstCard = 5000;
} // namespace

class RecordBackfillPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        MessageBox::clearShownTexts();
        MessageBox::setDefaultAnswer(QMessageBox::Ok);
        m_f = std::make_unique<StationWindow>(true);
        // Not pushing yet: the station is not running.
        m_panel = m_f->sim().addPanel(kPanel);
        QVERIFY(m_panel);
        addUsers(40);
    }

    void cleanup()
    {
        m_f.reset();
        m_panel = nullptr;
        m_user = 0;
    }

    void gapsAreStoredOnceAndLeftOnThePanel()
    {
        // Passages made while the station was not running are only in the panel's memory.
        for (int i = 0; i < 4; ++i)
            pass();
        QCOMPARE(m_f->storedPassages(), 0);

        // The window starts: its monitor listens and every panel is fetched.
        Station& station = m_f->sim().station();
        station.network().backfillRetryMs = 50;
        QVERIFY2(m_f->open(), qPrintable(m_f->error()));
        RecordBackfill* backfill = m_f->pages().recordPages()->backfill();
        QCOMPARE(backfill, station.backfill());
        QSignalSpy fetched(backfill, &RecordBackfill::panelFetched);
        PanelLiveGrid* grid = m_f->monitorPage().panels();
        QTRY_COMPARE(fetched.size(), 1);
        QCOMPARE(fetched.at(0).at(0).toInt(), kPanel);
        QTRY_VERIFY(backfill->isIdle());
        expectStoredOnce();
        QCOMPARE(grid->lastRecordOf(kPanel), m_f->sim().now());
        // A background job leaves the window as it was: no refusal, no busy state.
        QVERIFY(MessageBox::shownTexts().isEmpty());
        QVERIFY(!m_f->bridge().busy());

        // Live passages, then the pushed link breaks: the next frame goes to a dead port, the
        // following ones nowhere; they reach the station only from the panel's memory.
        const quint16 port = m_f->monitor().tcpPort();
        m_panel->setPushTarget(u"127.0.0.1"_s, port);
        for (int i = 0; i < 3; ++i)
            pass();
        QTRY_COMPARE(m_f->storedPassages(), 7);
        m_panel->setPushTarget(u"127.0.0.1"_s, StationFixture::deadPort());
        pass();
        QTRY_VERIFY(m_f->monitor().connectedPanels().isEmpty());
        m_panel->setPushTarget(QString(), 0);
        for (int i = 0; i < 5; ++i)
            pass();
        QCOMPARE(m_f->storedPassages(), 7);

        // The link comes back with a live passage: the gap is fetched as well (that each passage
        // is then stored once is the back-fill's own test).
        m_panel->setPushTarget(u"127.0.0.1"_s, port);
        pass();
        QTRY_COMPARE(fetched.size(), 2);
        QTRY_VERIFY(backfill->isIdle());
        QVERIFY(MessageBox::shownTexts().isEmpty());

        // The window closes the way the station's does (pages first): the back-fill and the
        // monitor go with the pages, the worker after them, and nothing more is queued.
        backfill->request(kPanel);
        m_f->close();
        QVERIFY(!station.backfill());
        QVERIFY(!station.live().isRunning());
        QVERIFY(!station.worker().isRunning());
        QVERIFY(!station.jobs().backgroundBusy());
    }

    void backgroundJobsStayQuietAndOperatorsWait()
    {
        // Only the test's own background jobs.
        m_f->sim().station().network().backfill = false;
        QVERIFY2(m_f->open(), qPrintable(m_f->error()));
        PanelWorkerBridge& bridge = m_f->bridge();
        auto* button = new QPushButton(&m_f->window());
        bridge.guard(button);

        std::atomic<bool> release{ false };
        // A failed check returns early: the held jobs must still be let go and ended, or the test
        // hangs or they outlive what they point at.
        const auto letGo = qScopeGuard([this, &release] {
            release = true;
            m_f->waitIdle();
        });
        std::atomic<bool> quietRan{ false };
        QVERIFY(bridge.runQuiet([&](PanelLink&, Database&) {
            while (!release.load())
                QThread::msleep(5);
            quietRan = true;
        }));
        QVERIFY(bridge.backgroundBusy());
        QVERIFY(!bridge.busy());
        QVERIFY(button->isEnabled());
        QVERIFY(QApplication::overrideCursor() == nullptr);
        // One background job at a time: a second one is told to come back later.
        QVERIFY(!bridge.runQuiet([](PanelLink&, Database&) {}));

        // The operator's job waits for the background job, showing the window busy meanwhile.
        bool quietFirst = false;
        bool done = false;
        QVERIFY(bridge.run([&](OperationContext&) { quietFirst = quietRan.load(); }, [&] { done = true; }));
        QVERIFY(MessageBox::shownTexts().isEmpty());
        QVERIFY(bridge.busy());
        QVERIFY(!button->isEnabled());
        QVERIFY(QApplication::overrideCursor() != nullptr);
        // Nor may a background job slip in ahead of the waiting operator.
        QVERIFY(!bridge.runQuiet([](PanelLink&, Database&) {}));

        release = true;
        QTRY_VERIFY(done);
        // The operator's job ran only after the background job was released.
        QVERIFY(quietFirst);
        QVERIFY(!bridge.busy());

        // While an operator's job runs no background job starts; once it has ended they do again.
        release = false;
        QVERIFY(bridge.run([&](OperationContext&) {
            while (!release.load())
                QThread::msleep(5);
        }));
        QVERIFY(!bridge.runQuiet([](PanelLink&, Database&) {}));
        release = true;
        QVERIFY(m_f->waitIdle());
        QVERIFY(bridge.runQuiet([](PanelLink&, Database&) {}));
        QTRY_VERIFY(!bridge.backgroundBusy());
    }

private:
    // Known users only, so each passage is kept in the panel's memory as well as pushed.
    void addUsers(int count)
    {
        m_panel->modify([count](SimPanelState& state) {
            SimGroup group;
            group.number = 1;
            group.doorAllowed = { true, true, true, true };
            state.groups.insert(1, group);
            for (int id = 1; id <= count; ++id) {
                SimUser user;
                user.id = id;
                user.card = kFirstCard + id;
                user.group = 1;
                state.putUser(user);
            }
        });
        for (int id = 1; id <= count; ++id)
            m_f->sim().addUser(id, kFirstCard + id);
    }

    void pass()
    {
        ++m_user;
        m_panel->presentCard(1 + m_user % 4, kFirstCard + m_user);
    }

    // Every record the panel holds is in AccessDatas exactly once, and nothing else is.
    void expectStoredOnce()
    {
        const QList<SimRecord> held = m_panel->records();
        QCOMPARE(m_f->storedPassages(), held.size());
        Database& db = m_f->db();
        for (const SimRecord& r : held) {
            const QDateTime at(r.time.date(), r.time.time());
            QCOMPARE(db.scalar(u"SELECT COUNT(*) FROM \"AccessDatas\" WHERE \"ID\" = ? AND \"Tarih\" = ? "
                               u"AND \"Panel ID\" = ?"_s,
                               { r.userId, db.toSql(at), kPanel })
                         .toInt(),
                     1);
        }
    }

    std::unique_ptr<StationWindow> m_f;
    SimPanel* m_panel = nullptr;
    int m_user = 0;
};

QTEST_MAIN(RecordBackfillPagesTest)
#include "tst_RecordBackfillPages.moc"
