#include "sim/SimAccessDecider.h"

#include "sim/SimPanelState.h"
#include "sim/SimText.h"

#include <QTest>

namespace {
// Monday 15 January 2024 unless another day is given; panel times carry no time zone.
QDateTime at(int hour, int minute = 0, int day = 15)
{
    return QDateTime(QDate(2024, 1, day), QTime(hour, minute), Qt::UTC);
}

// Two users of group 1, which may pass doors 1, 2 and 4 at any time.
SimPanelState makeState()
{
    SimPanelState state;
    for (int id : { 1, 2 }) {
        SimUser user;
        user.id = id;
        user.card = 1000 + id;
        user.group = 1;
        state.putUser(user);
    }
    SimGroup group;
    group.number = 1;
    group.doorAllowed = { true, true, false, true };
    state.groups.insert(1, group);
    return state;
}

// A passage at door 1 (entry) or door 2 (exit), counted when granted.
PassageCode pass(SimPanelState& state, qint64 card, int door, const QDateTime& moment)
{
    const SimRecord record = SimAccessDecider::decide(state, door, card, moment);
    SimAccessDecider::commit(state, record);
    return record.code;
}

// The 105 characters after a time group's basic area.
QByteArray extended(const QByteArray& weekdays, const QByteArray& mondayWindow = "00000000",
                    const QByteArray& monthDays = QByteArray(31, '0'), const QByteArray& extra = "000000000")
{
    return weekdays + mondayWindow + QByteArray(48, '0') + monthDays + extra + "11";
}
} // namespace

class SimAccessDeciderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decidesWhoMayPassWhichDoor()
    {
        SimPanelState state = makeState();

        SimRecord record = SimAccessDecider::decide(state, 1, 1001, at(10));
        QCOMPARE(record.code, PassageCode::Granted);
        QCOMPARE(record.userId, 1);
        QCOMPARE(record.direction, Direction::Entry);

        record = SimAccessDecider::decide(state, 2, 1001, at(10));
        QCOMPARE(record.code, PassageCode::Granted);
        QCOMPARE(record.direction, Direction::Exit); // door 2 is an exit

        record = SimAccessDecider::decide(state, 1, 99999, at(10));
        QCOMPARE(record.code, PassageCode::UnknownCard);
        QCOMPARE(record.userId, 0);

        // Door 3 is not among the group's doors.
        QCOMPARE(SimAccessDecider::decide(state, 3, 1001, at(10)).code, PassageCode::Denied);
        // An inactive door refuses everyone.
        state.settings.doors[3].active = false;
        QCOMPARE(SimAccessDecider::decide(state, 4, 1001, at(10)).code, PassageCode::Denied);
        // A group the panel does not hold refuses its users.
        state.users[2].group = 77;
        QCOMPARE(SimAccessDecider::decide(state, 1, 1002, at(10)).code, PassageCode::Denied);
        // A time group the panel does not hold closes the door.
        state.groups[1].doorTimeGroup[0] = 9;
        QCOMPARE(SimAccessDecider::decide(state, 1, 1001, at(10)).code, PassageCode::Denied);
    }

    void timeGroupsAllowTheirMoments()
    {
        const QByteArray none = extended("0000000");
        QByteArray day15(31, '0');
        day15[14] = '1';
        QByteArray day14(31, '0');
        day14[13] = '1';
        const QByteArray extra = extended("1000000", "08000900", QByteArray(31, '0'), "109301030");
        struct Row
        {
            const char* name;
            int type;
            QByteArray basic;
            QByteArray rest;
            QDateTime moment;
            bool allowed;
        };
        const QList<Row> rows{
            { "no restriction", 0, {}, none, at(3), true },
            { "within hours", 3, "08001700", none, at(10), true },
            { "end of hours is out", 3, "08001700", none, at(17), false },
            { "over midnight", 3, "22000600", none, at(23), true },
            { "outside hours, inside", 4, "08001700", none, at(10), false },
            { "between dates", 1, "010124310124", none, at(10), true },
            { "before the dates", 1, "010224280224", none, at(10), false },
            { "outside dates", 2, "010224280224", none, at(10), true },
            { "weekly, Monday", 5, {}, extended("1000000"), at(10), true },
            { "weekly, not Monday", 5, {}, extended("0111111"), at(10), false },
            { "day window", 6, {}, extended("1000000", "09001100"), at(10), true },
            { "after day window", 6, {}, extended("1000000", "09001100"), at(12), false },
            { "monthly", 8, {}, extended("0000000", "00000000", day15), at(10), true },
            { "monthly, other day", 8, {}, extended("1111111", "00000000", day14), at(10), false },
            { "additional window", 9, {}, extra, at(10), true },
            { "after additional window", 9, {}, extra, at(11), false },
            { "day or additional window", 13, {}, extra, at(10), true },
            { "day window of 13", 13, {}, extra, at(8, 30), true },
            { "neither window", 13, {}, extra, at(11), false },
            { "canteen", 10, "120000000000", none, at(12, 30), true },
            { "after canteen hour", 10, "120000000000", none, at(13, 30), false },
            { "listed hour", 11, "101112000000", none, at(10, 59), true },
            { "unlisted hour", 11, "101112000000", none, at(9), false },
            { "banned hour", 12, "101112000000", none, at(10), false },
            { "undefined type", 7, {}, none, at(10), false },
        };
        for (const Row& row : rows) {
            const auto timeGroup = SimTimeGroup::fromFields("05" + SimText::number(row.type, 2)
                                                            + row.basic.leftJustified(12, '0') + row.rest);
            QVERIFY2(timeGroup, row.name);
            SimPanelState state = makeState();
            state.timeGroups.insert(5, *timeGroup);
            state.groups[1].doorTimeGroup[0] = 5;
            QVERIFY2((SimAccessDecider::decide(state, 1, 1001, row.moment).code == PassageCode::Granted) == row.allowed,
                     row.name);
            // Door 2 has no time group and stays open.
            QCOMPARE(SimAccessDecider::decide(state, 2, 1001, row.moment).code, PassageCode::Granted);
            // Entries through a canteen door count in their window.
            if (row.type == 10 && row.allowed) {
                SimAccessDecider::commit(state, SimAccessDecider::decide(state, 1, 1001, row.moment));
                QCOMPARE(state.canteenCounts.value(1), (std::array<int, 3>{ 1, 0, 0 }));
            }
        }
    }

    void dailyApprovalAndRepeatBlock()
    {
        SimPanelState state = makeState();
        state.groups[1].dailyApprovalRequired = true;
        QCOMPARE(pass(state, 1001, 1, at(10)), PassageCode::Denied);
        state.dailyApproved.insert(1);
        QCOMPARE(pass(state, 1001, 1, at(10)), PassageCode::Granted);
        QCOMPARE(pass(state, 1002, 1, at(10)), PassageCode::Denied);

        // The repeated-access block refuses the same card again within its time.
        state.settings.repeatBlockSeconds = 10;
        QCOMPARE(pass(state, 1001, 2, at(10, 0).addSecs(5)), PassageCode::Denied);
        QCOMPARE(pass(state, 1001, 2, at(10, 0).addSecs(15)), PassageCode::Granted);
    }

    void antiPassbackRefusesTheSameDirectionTwice()
    {
        SimPanelState state = makeState();
        QCOMPARE(pass(state, 1001, 1, at(9)), PassageCode::Granted);
        state.settings.localAntiPassback = { true, false };
        QCOMPARE(pass(state, 1001, 1, at(10)), PassageCode::AntiPassback);
        QCOMPARE(pass(state, 1001, 2, at(11)), PassageCode::Granted);
        QCOMPARE(pass(state, 1001, 2, at(12)), PassageCode::AntiPassback);
        // A user never seen may go either way first.
        QCOMPARE(pass(state, 1002, 2, at(12)), PassageCode::Granted);
        // A group may be exempt.
        QCOMPARE(pass(state, 1001, 1, at(15)), PassageCode::Granted);
        QCOMPARE(pass(state, 1001, 1, at(15, 1)), PassageCode::AntiPassback);
        state.groups[1].antiPassbackOff = true;
        QCOMPARE(pass(state, 1001, 1, at(15, 2)), PassageCode::Granted);
    }

    void countersLimitEntriesNotExits()
    {
        SimPanelState state = makeState();
        state.groups[1].accessLimit = 2;
        QCOMPARE(pass(state, 1001, 1, at(8)), PassageCode::Granted);
        QCOMPARE(pass(state, 1001, 1, at(9)), PassageCode::Granted);
        QCOMPARE(pass(state, 1001, 1, at(10)), PassageCode::Denied);
        QCOMPARE(pass(state, 1001, 2, at(11)), PassageCode::Granted);

        // Inside limit: one member of the group inside at a time. User 1 went in twice and out once.
        state = makeState();
        state.groups[1].insideLimit = 1;
        QCOMPARE(pass(state, 1001, 1, at(8)), PassageCode::Granted);
        QCOMPARE(pass(state, 1002, 1, at(8, 1)), PassageCode::Denied);
        QCOMPARE(pass(state, 1001, 2, at(8, 2)), PassageCode::Granted);
        QCOMPARE(pass(state, 1002, 1, at(8, 3)), PassageCode::Granted);
        // Exits never count below zero.
        pass(state, 1002, 2, at(9));
        pass(state, 1002, 2, at(9, 1));
        QCOMPARE(state.insideCounts.value(1), 0);

        // Local capacity of zone 1, and a group it does not apply to.
        state = makeState();
        state.settings.localCapacityOn = true;
        state.settings.localCapacity = 1;
        QCOMPARE(pass(state, 1001, 1, at(8)), PassageCode::Granted);
        QCOMPARE(pass(state, 1002, 1, at(8, 1)), PassageCode::Denied);
        state.groups[1].localCapacityOff = true;
        QCOMPARE(pass(state, 1002, 1, at(8, 2)), PassageCode::Granted);
        QCOMPARE(state.zoneCounters[0], 2);
    }

    void calendarsAndTemporaryGroupsChooseTheGroup()
    {
        SimPanelState state = makeState();
        // Calendar 3 by times of day: group 11 before 08:00, 12 until 12:00, 13 after.
        const auto byTime = SimCalendar::fromFields("30080012000000000000000000001100120013");
        QVERIFY(byTime);
        state.calendars.insert(3, *byTime);
        state.users[1].calendarActive = true;
        state.users[1].calendar = 3;
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(7)), 11);
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(10)), 12);
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(13)), 13);

        // Calendar 4 by dates: switch at 10/01/2024 09:00 and at 20/01/2024 18:30.
        const auto byDate = SimCalendar::fromFields("41090018301001202420012024002100220023");
        QVERIFY(byDate);
        state.calendars.insert(4, *byDate);
        state.users[1].calendar = 4;
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(8, 59, 10)), 21);
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(10)), 22);
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(18, 30, 20)), 23);
        // A calendar the panel does not hold leaves the user in its own group.
        state.users[1].calendar = 5;
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(10)), 1);

        // A temporary group holds until its end, then the own group applies again.
        state.users[1].temporaryActive = true;
        state.users[1].temporaryGroup = 9;
        state.users[1].temporaryUntil = at(12);
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(11, 59)), 9);
        QCOMPARE(SimAccessDecider::effectiveGroup(state, 1, at(12)), 1);
    }
};

QTEST_GUILESS_MAIN(SimAccessDeciderTest)
#include "SimAccessDeciderTest.moc"
