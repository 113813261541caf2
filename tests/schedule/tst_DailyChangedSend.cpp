// The window's daily send with "changed users only" chosen: the choice is kept in the database,
// is still there when the window opens again, and the scheduled send then takes each panel only
// the users changed since its last send.

#include "operations/schedule/DailySendRepository.h"
#include "operations/schedule/ScheduleRunner.h"
#include "store/Clock.h"
#include "support/StationWindow.h"
#include "ui/common/MessageBox.h"
#include "ui/main/PanelWorkerBridge.h"
#include "ui/main/frmMain.h"
#include "ui/schedule/MainSchedule.h"

#include <QCheckBox>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QDate Day(2026, 3, 16);

QList<int> usersOn(SimPanel* panel)
{
    QList<int> ids;
    panel->inspect([&](const SimPanelState& s) { ids = s.users.keys(); });
    std::sort(ids.begin(), ids.end());
    return ids;
}

// The window's ticks just before 08:00 of the given day, until the send it starts is over.
bool runDailySend(StationWindow& f, MainSchedule& schedule, ManualClock& clock, const QDate& day)
{
    clock.set(QDateTime(day, QTime(7, 59, 57)));
    f.mainWindow().clockTick();
    clock.advanceSecs(1);
    f.mainWindow().clockTick();
    return f.waitIdle() && QTest::qWaitFor([&] { return !schedule.runner().runUnderWay(); });
}

} // namespace

class DailyChangedSendTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { MessageBox::setDefaultAnswer(QMessageBox::Yes); }

    void changedOnlyChoiceIsKeptAndUsedByTheScheduledSend()
    {
        StationWindow f;
        SimPanel* panel = f.sim().addPanel(1);
        QVERIFY(panel);
        for (int id = 1; id <= 4; ++id)
            f.sim().addUser(id, 5000 + id);
        // The daily send at 08:00, as the station's settings file would give it.
        f.sim().settings().dailySendOn = true;
        f.sim().settings().setDailySendTime(QTime(8, 0));
        QVERIFY2(f.open(), qPrintable(f.error()));
        ManualClock clock(QDateTime(Day, QTime(7, 0)));
        MainSchedule* schedule = MainSchedule::install(f.mainWindow(), f.pages(), clock);
        auto* changedOnly = f.find<QCheckBox>(u"chkDailySendChangedOnly"_s);
        QVERIFY(changedOnly && !changedOnly->isChecked());

        // Not chosen: every user goes.
        QVERIFY(runDailySend(f, *schedule, clock, Day));
        QCOMPARE(usersOn(panel), (QList<int>{ 1, 2, 3, 4 }));

        changedOnly->setChecked(true);
        QVERIFY(DailySendRepository(f.db()).changedOnly());
        // The window opens again over the same database: the choice is still made.
        f.close();
        QVERIFY2(f.open(), qPrintable(f.error()));
        schedule = MainSchedule::install(f.mainWindow(), f.pages(), clock);
        QVERIFY(f.find<QCheckBox>(u"chkDailySendChangedOnly"_s)->isChecked());

        // Chosen: a panel that lost its users gets only the one added since its last send, which
        // a send of every user would not tell apart.
        panel->modify([](SimPanelState& s) { s.clearUsers(); });
        f.sim().addUser(5, 5005);
        QVERIFY(runDailySend(f, *schedule, clock, Day.addDays(1)));
        QCOMPARE(usersOn(panel), (QList<int>{ 5 }));
        QVERIFY(MessageBox::shownTexts().isEmpty());
    }
};

QTEST_MAIN(DailyChangedSendTest)
#include "tst_DailyChangedSend.moc"
