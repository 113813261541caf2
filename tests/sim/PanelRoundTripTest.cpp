#include "protocol/CalendarCommands.h"
#include "protocol/GroupCommands.h"
#include "protocol/PanelAddress.h"
#include "protocol/PanelLink.h"
#include "protocol/PanelSettingsFrame.h"
#include "protocol/ReaderCommands.h"
#include "protocol/RecordDownload.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QTest>

namespace {
const PanelAddress kPanel(7, 0x12AB);
const QDateTime kNow(QDate(2016, 1, 31), QTime(9, 5, 3));

UserRecord sampleUser(qint32 id, qint32 group)
{
    UserRecord user;
    user.id = id;
    user.cardId = 100000 + id;
    user.pin = 1234;
    user.passageMode = 1;
    user.groupNo = group;
    user.calendarNo = 2;
    user.temporaryGroupNo = 9;
    user.temporaryGroupTime = QTime(9, 5);
    user.temporaryGroupDate = QDate(2016, 1, 31);
    return user;
}

qint64 cardOf(qint32 userId)
{
    return 100000 + userId;
}
} // namespace

// The station's frames over its real link, read by a simulated panel: both sides agree on every
// field of each kind. The bytes themselves are checked once on each side in their own tests.
class PanelRoundTripTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<SimulatorHost>();
        SimulatorHost::Options options;
        options.statusPort = -1;
        options.searchPort = -1;
        QVERIFY(m_host->start(options));
        m_panel = m_host->addPanel({ 7, 0x12AB, 0, QString(), 0 });
        QVERIFY(m_panel);
        m_link = std::make_unique<PanelLink>();
        PanelLink::Settings settings;
        settings.pacingMs = 0;
        m_link->setSettings(settings);
        QVERIFY(m_link->ConnectPanel(QStringLiteral("127.0.0.1"), m_panel->port()));
    }

    void cleanup()
    {
        m_link.reset();
        m_host.reset();
    }

    void usersAndGroups()
    {
        UserRecord user = sampleUser(7, 3);
        user.temporaryGroupActive = true;
        QVERIFY(SendNewCard(*m_link, kPanel, user, kNow).isAccepted());
        const auto stored = m_panel->user(7);
        QVERIFY(stored);
        QCOMPARE(stored->card, qint64(100007));
        QCOMPARE(stored->calendar, 2);
        QCOMPARE(stored->temporaryUntil, QDateTime(QDate(2016, 1, 31), QTime(9, 5), Qt::UTC));
        QCOMPARE(ReadCard(*m_link, kPanel, 7), CommandResult<UserRecord>::accepted(user));
        // An empty slot is marked with dashes, which reads as another answer than a user's.
        QCOMPARE(ReadCard(*m_link, kPanel, 8).outcome(), CommandOutcome::OtherCode);

        AccessGroupRecord group;
        group.groupNo = 3;
        group.doors = { true, true, false, true };
        group.doorTimeGroups = { 4, 0, 0, 12 };
        group.dailyApprovalRequired = true;
        group.antiPassbackOff = true;
        QVERIFY(SendGroup(*m_link, kPanel, group).isAccepted());
        QVERIFY(SendDailyApproval(*m_link, kPanel, 7, true).isAccepted());
        m_panel->inspect([](const SimPanelState& s) {
            const SimGroup& g = s.groups.value(3);
            QCOMPARE(g.doorAllowed, (std::array<bool, 4>{ true, true, false, true }));
            QCOMPARE(g.doorTimeGroup, (std::array<int, 4>{ 4, 0, 0, 12 }));
            QVERIFY(g.dailyApprovalRequired && g.antiPassbackOff && !g.repeatBlockOff);
            QVERIFY(s.dailyApproved.contains(7));
        });
        QVERIFY(SendDailyApproval(*m_link, kPanel, 7, false).isAccepted());
        QVERIFY(EraseGroups(*m_link, kPanel).isAccepted());
        m_panel->inspect([](const SimPanelState& s) { QVERIFY(s.groups.isEmpty() && s.dailyApproved.isEmpty()); });
    }

    void timeGroupLayoutsAgree()
    {
        // Every field of a weekly plan with day windows and an additional window lands where the panel
        // reads it.
        TimeGroupRecord plan;
        plan.number = 16;
        plan.restrictionType = 13;
        plan.weekdays = { true, false, true, false, false, false, true };
        for (int day = 0; day < 7; ++day) {
            plan.weekdayStart[day] = QTime(6 + day, 15);
            plan.weekdayEnd[day] = QTime(14 + day, 45);
        }
        plan.monthDays[0] = plan.monthDays[30] = true;
        plan.extraWindow = true;
        plan.extraStart = QTime(22, 0);
        plan.extraEnd = QTime(23, 30);
        plan.extraHours = 3;
        QVERIFY(SendTimeGroup(*m_link, kPanel, plan).isAccepted());

        TimeGroupRecord canteen;
        canteen.number = 2;
        canteen.restrictionType = 10;
        canteen.startTimes = { QTime(7, 30), QTime(12, 0), QTime(18, 45) };
        canteen.extraHours = 2;
        QVERIFY(SendTimeGroup(*m_link, kPanel, canteen).isAccepted());

        TimeGroupRecord banned;
        banned.number = 5;
        banned.restrictionType = 12;
        banned.hours = { 0, 1, 2, 3, 4, 23 };
        QVERIFY(SendTimeGroup(*m_link, kPanel, banned).isAccepted());

        m_panel->inspect([](const SimPanelState& s) {
            const SimTimeGroup& p = s.timeGroups.value(16);
            QCOMPARE(p.type, 13);
            QCOMPARE(p.weekdays, (std::array<bool, 7>{ true, false, true, false, false, false, true }));
            QCOMPARE(p.weekdayStart[3], QTime(9, 15));
            QCOMPARE(p.weekdayEnd[6], QTime(20, 45));
            QVERIFY(p.monthDays[0] && p.monthDays[30] && !p.monthDays[15]);
            QVERIFY(p.extraWindow);
            QCOMPARE(p.extraStart, QTime(22, 0));
            QCOMPARE(p.extraEnd, QTime(23, 30));
            QCOMPARE(p.extraHours, 3);
            QCOMPARE(s.timeGroups.value(2).startTimes[2], QTime(18, 45));
            QCOMPARE(s.timeGroups.value(2).extraHours, 2);
            QCOMPARE(s.timeGroups.value(5).hours, (std::array<int, 6>{ 0, 1, 2, 3, 4, 23 }));
        });
        QVERIFY(EraseTimeGroups(*m_link, kPanel).isAccepted());
        m_panel->inspect([](const SimPanelState& s) { QVERIFY(s.timeGroups.isEmpty()); });
    }

    void calendars()
    {
        GroupCalendarRecord byDates;
        byDates.number = 3;
        byDates.typeText = QStringLiteral(u"İki Tarih Arası");
        byDates.time1 = QTime(8, 0);
        byDates.time2 = QTime(12, 0);
        byDates.date1 = QDate(2024, 1, 10);
        byDates.date2 = QDate(2024, 1, 20);
        byDates.group1 = 11;
        byDates.group2 = 12;
        byDates.group3 = 13;
        QVERIFY(SendGroupCalendar(*m_link, kPanel, byDates).isAccepted());
        m_panel->inspect([](const SimPanelState& s) {
            const SimCalendar& c = s.calendars.value(3);
            QCOMPARE(c.type, 1);
            QCOMPARE(c.time2, QTime(12, 0));
            QCOMPARE(c.date1, QDate(2024, 1, 10));
            QCOMPARE(c.date2, QDate(2024, 1, 20));
            QCOMPARE((std::array<int, 3>{ c.group1, c.group2, c.group3 }), (std::array<int, 3>{ 11, 12, 13 }));
        });
        // Programmed slots are sent and read back through the simulator in the slot transfer's tests.
    }

    // Readers, clocks, door commands, counter reads and the zone counter reach the simulator in the
    // operations' own tests; here what the erasing commands leave behind.
    void countersAndSettings()
    {
        m_panel->modify([](SimPanelState& s) {
            s.accessCounts[7] = 4;
            s.insideCounts[3] = 5;
            s.antiPassback[71] = Direction::Entry;
            s.alarm = true;
        });
        QVERIFY(EraseAccessCounter(*m_link, kPanel, 7).isAccepted());
        QVERIFY(EraseAllAccessCounters(*m_link, kPanel).isAccepted());
        QVERIFY(ClearAllInsideCounts(*m_link, kPanel).isAccepted());
        QVERIFY(ResetUserAntiPassback(*m_link, kPanel, 7).isAccepted());
        QVERIFY(ResetAllAntiPassback(*m_link, kPanel).isAccepted());
        QVERIFY(ClearAlarm(*m_link, kPanel).isAccepted());
        m_panel->inspect([](const SimPanelState& s) {
            QVERIFY(s.accessCounts.isEmpty() && s.insideCounts.isEmpty() && s.antiPassback.isEmpty() && !s.alarm);
        });

        PanelSettingsRecord settings;
        settings.ip = { 127, 0, 0, 1 };
        settings.tcpPort = m_panel->port();
        settings.name = QStringLiteral(u"Giriş Kapısı");
        settings.localApb = 1;
        settings.temporaryGroupActive = 1;
        settings.doors[1].doorType = 1;
        settings.doors[2].localZone = 2;
        QVERIFY(SendPanelSettings(*m_link, kPanel, settings).isAccepted());
        m_panel->inspect([](const SimPanelState& s) {
            QVERIFY(s.settings.localAntiPassback[0]);
            QVERIFY(!s.settings.doors[1].entry);
            QCOMPARE(s.settings.doors[2].localZone, 2);
            QCOMPARE(s.records.capacity(), 30000);
        });
        // The search answer carrying these back is read from simulated panels in the search's tests.
    }

    // Every field of downloaded passages is compared with what the simulated panel made in the record
    // retrieval's tests; here a panel holding one more than the station keeps: the rest stays, the
    // panel is not to be erased.
    void downloadsAtTheCap()
    {
        m_panel->modify([](SimPanelState& s) { s.records.setCapacity(40001); });
        m_panel->seedRecords(40001);
        const RecordDownload::Result result = DownloadRecords(*m_link, kPanel, cardOf);
        QCOMPARE(result.records.size(), 40000);
        QVERIFY(result.capReached);
        QVERIFY(!result.mayErasePanel());
    }

    // Time-outs, a refusal ending the attempts and a late answer are the link's own tests against a
    // scripted panel; noise and dropped links meet the operations in theirs. Here a panel silent for the
    // first send only answers the second attempt.
    void retriesUntilAnswered()
    {
        SimFault fault;
        fault.mode = SimFault::Mode::Silent;
        fault.remaining = 1;
        m_panel->setFault(fault);
        QVERIFY(SendNewCard(*m_link, kPanel, sampleUser(7, 3), kNow).isAccepted());
        QCOMPARE(m_panel->requestCount("NC"), 2);
    }

private:
    std::unique_ptr<SimulatorHost> m_host;
    SimPanel* m_panel = nullptr;
    std::unique_ptr<PanelLink> m_link;
};

QTEST_GUILESS_MAIN(PanelRoundTripTest)
#include "PanelRoundTripTest.moc"
