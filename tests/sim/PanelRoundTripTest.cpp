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

// Monday 15 January 2024.
QDateTime monday(int hour, int minute = 0)
{
    return QDateTime(QDate(2024, 1, 15), QTime(hour, minute), Qt::UTC);
}

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

// The station's command functions over its real link against a simulated panel.
class PanelRoundTripTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void userCommands();
    void groupsAndTimeGroupsDecideAccess();
    void timeGroupLayoutsAgree();
    void calendarsApprovalsAndSlots();
    void countersAndSettings();
    void downloadsStoredPassages();
    void downloadsAtTheCap();
    void retriesNoiseAndDrops();

private:
    PassageCode decide(int door, const QDateTime& moment);

    std::unique_ptr<SimulatorHost> m_host;
    SimPanel* m_panel = nullptr;
    std::unique_ptr<PanelLink> m_link;
};

void PanelRoundTripTest::init()
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

void PanelRoundTripTest::cleanup()
{
    m_link.reset();
    m_host.reset();
}

PassageCode PanelRoundTripTest::decide(int door, const QDateTime& moment)
{
    return m_panel->presentCard(door, cardOf(7), std::nullopt, moment).code;
}

void PanelRoundTripTest::userCommands()
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
    // Deleting, erasing and the user count reach the panels in the user transfer's own tests.
}

void PanelRoundTripTest::groupsAndTimeGroupsDecideAccess()
{
    AccessGroupRecord group;
    group.groupNo = 3;
    group.doors = { true, true, false, false };
    group.doorTimeGroups = { 4, 0, 0, 0 };
    group.dailyApprovalRequired = true;
    group.antiPassbackOff = true;
    QVERIFY(SendGroup(*m_link, kPanel, group).isAccepted());
    TimeGroupRecord office;
    office.number = 4;
    office.restrictionType = 3;
    office.startTime = QTime(8, 0);
    office.endTime = QTime(17, 0);
    QVERIFY(SendTimeGroup(*m_link, kPanel, office).isAccepted());
    QVERIFY(SendNewCard(*m_link, kPanel, sampleUser(7, 3), kNow).isAccepted());

    // Daily approval first, then the time group of door 1; door 2 has none.
    QCOMPARE(decide(1, monday(10)), PassageCode::Denied);
    QVERIFY(SendDailyApproval(*m_link, kPanel, 7, true).isAccepted());
    QCOMPARE(decide(1, monday(10)), PassageCode::Granted);
    QCOMPARE(decide(1, monday(18)), PassageCode::Denied);
    QCOMPARE(decide(2, monday(18)), PassageCode::Granted);
    QCOMPARE(decide(3, monday(10)), PassageCode::Denied);
    QVERIFY(SendDailyApproval(*m_link, kPanel, 7, false).isAccepted());
    QCOMPARE(decide(2, monday(10)), PassageCode::Denied);

    QVERIFY(SendDailyApproval(*m_link, kPanel, 7, true).isAccepted());
    QVERIFY(EraseTimeGroups(*m_link, kPanel).isAccepted());
    QCOMPARE(decide(1, monday(10)), PassageCode::Denied);
    QCOMPARE(decide(2, monday(10)), PassageCode::Granted);
    QVERIFY(EraseGroups(*m_link, kPanel).isAccepted());
    QCOMPARE(decide(2, monday(10)), PassageCode::Denied);
    m_panel->inspect([](const SimPanelState& s) { QVERIFY(s.groups.isEmpty() && s.timeGroups.isEmpty()); });
}

void PanelRoundTripTest::timeGroupLayoutsAgree()
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

    TimeGroupRecord dates;
    dates.number = 3;
    dates.restrictionType = 2;
    dates.startDate = QDate(2024, 2, 1);
    dates.endDate = QDate(2024, 2, 29);
    QVERIFY(SendTimeGroup(*m_link, kPanel, dates).isAccepted());

    TimeGroupRecord banned;
    banned.number = 5;
    banned.restrictionType = 12;
    banned.hours = { 0, 1, 2, 3, 4, 23 };
    QVERIFY(SendTimeGroup(*m_link, kPanel, banned).isAccepted());

    m_panel->inspect([](const SimPanelState& s) {
        QCOMPARE(s.timeGroups.size(), 4);
        const SimTimeGroup& p = s.timeGroups.value(16);
        QCOMPARE(p.type, 13);
        QCOMPARE(p.weekdays, (std::array<bool, 7>{ true, false, true, false, false, false, true }));
        QCOMPARE(p.weekdayStart[3], QTime(9, 15));
        QCOMPARE(p.weekdayEnd[6], QTime(20, 45));
        QVERIFY(p.monthDays[0] && p.monthDays[30] && !p.monthDays[15]);
        QVERIFY(p.extraWindow);
        QCOMPARE(p.extraEnd, QTime(23, 30));
        QCOMPARE(p.extraHours, 3);
        QVERIFY(p.allows(monday(22, 10)));
        QVERIFY(p.allows(monday(6, 20)));
        QVERIFY(!p.allows(monday(15)));

        const SimTimeGroup& c = s.timeGroups.value(2);
        QCOMPARE(c.startTimes[2], QTime(18, 45));
        QCOMPARE(c.extraHours, 2);
        QVERIFY(c.allows(monday(13, 59)) && !c.allows(monday(14)));

        const SimTimeGroup& d = s.timeGroups.value(3);
        QCOMPARE(d.endDate, QDate(2024, 2, 29));
        QVERIFY(d.allows(monday(10)));

        const SimTimeGroup& b = s.timeGroups.value(5);
        QCOMPARE(b.hours, (std::array<int, 6>{ 0, 1, 2, 3, 4, 23 }));
        QVERIFY(!b.allows(monday(23, 30)) && b.allows(monday(12)));
    });
}

void PanelRoundTripTest::calendarsApprovalsAndSlots()
{
    GroupCalendarRecord byHours;
    byHours.number = 2;
    byHours.typeText = QStringLiteral(u"İki Saat Arası");
    byHours.time1 = QTime(8, 0);
    byHours.time2 = QTime(12, 0);
    byHours.group1 = 11;
    byHours.group2 = 12;
    byHours.group3 = 13;
    QVERIFY(SendGroupCalendar(*m_link, kPanel, byHours).isAccepted());
    GroupCalendarRecord byDates = byHours;
    byDates.number = 3;
    byDates.typeText = QStringLiteral(u"İki Tarih Arası");
    byDates.date1 = QDate(2024, 1, 10);
    byDates.date2 = QDate(2024, 1, 20);
    QVERIFY(SendGroupCalendar(*m_link, kPanel, byDates).isAccepted());
    m_panel->inspect([](const SimPanelState& s) {
        QCOMPARE(s.calendars.value(2).type, 0);
        QCOMPARE(s.calendars.value(2).groupAt(monday(10)), 12);
        QCOMPARE(s.calendars.value(3).type, 1);
        QCOMPARE(s.calendars.value(3).groupAt(monday(7)), 12);
        QCOMPARE(s.calendars.value(3).groupAt(QDateTime(QDate(2024, 1, 21), QTime(7, 0), Qt::UTC)), 13);
    });

    ProgrammedSlot slot;
    slot.weekday = 3;
    slot.slot = 2;
    slot.active = true;
    slot.start = QTime(8, 0);
    slot.end = QTime(16, 30);
    slot.doors = { true, false, true, false, true, true, true, true };
    slot.relays = { false, true, false, false, true, false, false, false };
    QVERIFY(SendProgrammedSlot(*m_link, kPanel, slot).isAccepted());
    const CommandResult<QByteArray> read = ReadProgrammedSlot(*m_link, kPanel, 3, 2);
    QVERIFY2(read.isAccepted() && read.data().startsWith("$ZR12AB007O302"), read.data().constData());
    ProgrammedSlot back;
    back.weekday = 3;
    back.slot = 2;
    QVERIFY(ParseReadSlotAnswer(read.data(), back));
    QCOMPARE(back.active, true);
    QCOMPARE(back.start, QTime(8, 0));
    QCOMPARE(back.end, QTime(16, 30));
    // Doors and relays 5..8 never travel.
    QCOMPARE(back.doors, (std::array<bool, 8>{ true, false, true, false, false, false, false, false }));
    QCOMPARE(back.relays, (std::array<bool, 8>{ false, true, false, false, false, false, false, false }));
    QCOMPARE(ReadProgrammedSlot(*m_link, kPanel, 3, 17).outcome(), CommandOutcome::Refused);
    QVERIFY(ParseReadSlotAnswer(ReadProgrammedSlot(*m_link, kPanel, 3, 3).data(), back));
    QVERIFY(!back.active);
}

// Readers, clocks, door commands, counter reads and the zone counter reach the simulator in the
// operations' own tests; here what the erasing commands leave behind.
void PanelRoundTripTest::countersAndSettings()
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
    // The search answer gives back what was written.
    SearchAnswer answer;
    QCOMPARE(PanelSettingsFrame::parseSearchAnswer(m_panel->handleDatagram("%US1975**"), answer), ParseStatus::Valid);
    QCOMPARE(answer.serial, quint16(0x12AB));
    QCOMPARE(answer.panelNumber, 7);
    settings.name = QStringLiteral("Giris Kapisi");
    QCOMPARE(answer.settings, settings);
}

void PanelRoundTripTest::downloadsStoredPassages()
{
    RecordDownload::Result result = DownloadRecords(*m_link, kPanel, cardOf);
    QCOMPARE(result.outcome, RecordDownloadCollector::Complete);
    QVERIFY(result.records.isEmpty());

    QVERIFY(SendNewCard(*m_link, kPanel, sampleUser(7, 3), kNow).isAccepted());
    AccessGroupRecord group;
    group.groupNo = 3;
    group.doors = { true, true, true, true };
    QVERIFY(SendGroup(*m_link, kPanel, group).isAccepted());
    QCOMPARE(decide(1, monday(8, 1)), PassageCode::Granted);
    QCOMPARE(decide(4, monday(17, 2)), PassageCode::Granted);
    QCOMPARE(m_panel->presentCard(3, 424242, std::nullopt, monday(9)).code, PassageCode::UnknownCard);
    m_panel->pressExitButton(2);

    result = DownloadRecords(*m_link, kPanel, cardOf);
    QCOMPARE(result.outcome, RecordDownloadCollector::Complete);
    QVERIFY(result.mayErasePanel());
    // The unknown card's record carries user 0 and is skipped; the exit button's carries 20002.
    QCOMPARE(result.records.size(), 3);
    QCOMPARE(result.unreadCount, 1);
    QCOMPARE(result.unreadable, 0);
    const DownloadedRecord& entry = result.records[0];
    QCOMPARE(entry.door, 1);
    QCOMPARE(entry.localZone, 1);
    QCOMPARE(entry.direction, Direction::Entry);
    QCOMPARE(entry.code, PassageCode::Granted);
    QCOMPARE(entry.userId, 7);
    QCOMPARE(entry.cardId, qint64(100007));
    QCOMPARE(entry.time, QDateTime(QDate(2024, 1, 15), QTime(8, 1)));
    QCOMPARE(result.records[1].direction, Direction::Exit);
    QCOMPARE(result.records[1].door, 4);
    QCOMPARE(result.records[2].code, PassageCode::ButtonTrigger);
    QCOMPARE(result.records[2].userId, 20002);
    QCOMPARE(result.records[2].cardId, qint64(0));
    QCOMPARE(m_panel->recordCount(), 4);
}

void PanelRoundTripTest::downloadsAtTheCap()
{
    m_panel->seedRecords(40000);
    QCOMPARE(ReadRecordCount(*m_link, kPanel), CommandResult<qint32>::accepted(40000));
    RecordDownload::Result result = DownloadRecords(*m_link, kPanel, cardOf);
    QCOMPARE(result.outcome, RecordDownloadCollector::Complete);
    QCOMPARE(result.records.size(), 40000);
    QVERIFY(!result.capReached);
    QVERIFY(result.mayErasePanel());
    QCOMPARE(result.records.last().userId, 40000 % 20000 == 0 ? 20000 : 40000 % 20000);

    // A panel holding one more than the station keeps: the rest stays, the panel is not to be erased.
    m_panel->modify([](SimPanelState& s) { s.records.setCapacity(40001); });
    m_panel->seedRecords(1);
    result = DownloadRecords(*m_link, kPanel, cardOf);
    QCOMPARE(result.records.size(), 40000);
    QVERIFY(result.capReached);
    QVERIFY(!result.mayErasePanel());
}

// Time-outs, a refusal ending the attempts and a late answer are the link's own tests against a
// scripted panel; here the simulator's faults meet the real retries.
void PanelRoundTripTest::retriesNoiseAndDrops()
{
    // Silent for the first send only: the second attempt is answered.
    SimFault fault;
    fault.mode = SimFault::Mode::Silent;
    fault.remaining = 1;
    m_panel->setFault(fault);
    QVERIFY(SendNewCard(*m_link, kPanel, sampleUser(7, 3), kNow).isAccepted());
    QCOMPARE(m_panel->requestCount("NC"), 2);

    // Noise before the answer is passed over.
    fault = SimFault();
    fault.mode = SimFault::Mode::Noise;
    m_panel->setFault(fault);
    QCOMPARE(ReadRecordCount(*m_link, kPanel), CommandResult<qint32>::accepted(0));

    // A dropped link answers nothing.
    fault.mode = SimFault::Mode::Drop;
    m_panel->setFault(fault);
    QCOMPARE(ReadRecordCount(*m_link, kPanel).outcome(), CommandOutcome::NoAnswer);
}

QTEST_GUILESS_MAIN(PanelRoundTripTest)
#include "PanelRoundTripTest.moc"
