#include "protocol/CalendarCommands.h"
#include "protocol/GroupCommands.h"
#include "protocol/PanelSettingsFrame.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"

#include <QTest>

namespace {

const PanelAddress panel(7, 0x12AB);
const QDateTime sundayMorning(QDate(2016, 1, 31), QTime(9, 5, 3));

UserRecord sampleUser()
{
    UserRecord user;
    user.id = 7;
    user.cardId = 12345;
    user.pin = 1234;
    user.passageMode = 1;
    user.groupNo = 3;
    user.calendarNo = 1;
    user.temporaryGroupTime = QTime(9, 5);
    user.temporaryGroupDate = QDate(2016, 1, 31);
    return user;
}

} // namespace

class FramesTest : public QObject
{
    Q_OBJECT

private slots:
    void userBlockFieldsAndDefaults()
    {
        const QByteArray frame = BuildNewCardFrame(panel, sampleUser(), sundayMorning);
        QCOMPARE(frame, QByteArray("%NC12AB00700007000001234512340100030010000090531012016**\r"));

        UserRecord user = sampleUser();
        user.calendarNo = 9;
        QCOMPARE(BuildUserBlock(user, sundayMorning).at(27), '1');
        user.calendarNo = 0;
        QCOMPARE(BuildUserBlock(user, sundayMorning).at(27), '1');

        // Without a temporary-group time and date, the station's own moment fills them.
        user.temporaryGroupTime = QTime();
        user.temporaryGroupDate = QDate();
        const QDateTime now(QDate(2024, 12, 5), QTime(23, 41, 59));
        QCOMPARE(BuildUserBlock(user, now).mid(32), QByteArray("234105122024"));

        // A card number above the 10 digits keeps its leftmost digits, an ID above 5 likewise.
        user.id = 123456;
        QCOMPARE(BuildUserBlock(user, now).left(5), QByteArray("12345"));
    }

    void userBlockReadsBack()
    {
        UserRecord user = sampleUser();
        user.calendarActive = true;
        user.temporaryGroupActive = true;
        user.calendarNo = 4;
        user.temporaryGroupNo = 77;
        UserRecord read;
        QVERIFY(ParseUserBlock(BuildUserBlock(user, sundayMorning), read));
        QCOMPARE(read, user);
        QVERIFY(!ParseUserBlock(QByteArray(44, '-'), read));
        QVERIFY(!ParseUserBlock("0000700000", read));
        // The largest card the panels carry reads back; ten digits beyond it are not a card.
        user.cardId = 2147483647;
        QVERIFY(ParseUserBlock(BuildUserBlock(user, sundayMorning), read));
        QCOMPARE(read.cardId, 2147483647);
        const QByteArray tooLarge = BuildUserBlock(user, sundayMorning).replace(5, 10, "2147483648");
        QVERIFY(!ParseUserBlock(tooLarge, read));
    }

    void clockFrameUsesTwoDigitYearAndWeekday()
    {
        QCOMPARE(BuildSetClockFrame(panel, sundayMorning), QByteArray("%DR12AB00731011609050307**\r"));
        const QDateTime monday(QDate(2099, 3, 2), QTime(0, 0, 0));
        QCOMPARE(BuildSetClockFrame(panel, monday).mid(10, 14), QByteArray("02039900000001"));
    }

    void shortUserFrames()
    {
        QCOMPARE(BuildReadCardFrame(panel, 7), QByteArray("%UC12AB00700007**\r"));
        QCOMPARE(BuildDeleteCardFrame(panel, 20000), QByteArray("%DC12AB00720000**\r"));
        QCOMPARE(BuildUserCountFrame(panel, 250), QByteArray("%MU12AB00700250**\r"));
        QCOMPARE(BuildEraseAllCardsFrame(panel), QByteArray("%EC12AB007**\r"));
    }

    void accessGroupFrameSanitisesCounters()
    {
        AccessGroupRecord group;
        group.groupNo = 3;
        group.doorTimeGroups = { 1, 2, 0, 16 };
        group.doors = { true, true, false, false };
        group.accessCountLimit = 255;
        group.accessCountZone = 1;
        group.insideCountLimit = 9999;
        group.insideCountZone = 2;
        group.dailyApprovalRequired = true;
        group.localCapacityOff = true;
        group.antiPassbackOff = true;
        QCOMPARE(BuildGroupFrame(panel, group), QByteArray("%TN12AB0070003001002000016255019999021110000000101**\r"));

        group.accessCountLimit = 256;
        group.accessCountZone = 100;
        group.insideCountLimit = 10000;
        group.insideCountZone = 0;
        group.doorTimeGroups[0] = 1234;
        const QByteArray sanitised = BuildGroupFrame(panel, group);
        QCOMPARE(sanitised.mid(14, 3), QByteArray("123"));
        QCOMPARE(sanitised.mid(26, 11), QByteArray("00001000001"));

        group.accessCountLimit = -1;
        group.insideCountZone = 99;
        QCOMPARE(BuildGroupFrame(panel, group).mid(26, 3), QByteArray("000"));
        QCOMPARE(BuildGroupFrame(panel, group).mid(35, 2), QByteArray("99"));
    }

    void timeGroupFrameOfEveryLayout()
    {
        TimeGroupRecord group;
        group.number = 7;
        group.startDate = QDate(2016, 1, 2);
        group.endDate = QDate(2017, 12, 31);
        group.startTime = QTime(7, 45);
        group.endTime = QTime(19, 0);
        group.weekdays = { true, false, true, false, false, false, true };
        for (int day = 0; day < 7; ++day) {
            group.weekdayStart[day] = QTime(7 + day, 0);
            group.weekdayEnd[day] = QTime(16 + day, 30);
        }
        group.monthDays[0] = group.monthDays[14] = group.monthDays[30] = true;
        group.extraWindow = true;
        group.extraStart = QTime(22, 0);
        group.extraEnd = QTime(23, 30);
        group.startTimes = { QTime(11, 30), QTime(12, 0), QTime(18, 15) };
        group.extraHours = 2;
        group.extraHours2 = 3;
        group.hours = { 1, 2, 3, 13, 23, 0 };
        // One time group with every field set; each type carries its own part of it.
        const QByteArray plan = QByteArray("1010001") + "07001630080017300900183010001930110020301200213013002230" + "1"
            + QByteArray(13, '0') + "1" + QByteArray(15, '0') + "1" + "122002330" + "23";
        // Type 7 takes the default layout like 0.
        const QByteArray none(105, '0');
        const QList<std::pair<int, QByteArray>> rows = {
            { 0, QByteArray(12, '0') + none },
            { 1, "020116311217" + none },
            { 2, "020116311217" + none },
            { 3, "074519000000" + none },
            { 4, "074519000000" + none },
            { 5, QByteArray(12, '0') + plan },
            { 6, QByteArray(12, '0') + plan },
            { 8, QByteArray(12, '0') + plan },
            { 9, QByteArray(12, '0') + plan },
            { 13, QByteArray(12, '0') + plan },
            { 10, "113012001815" + QByteArray(103, '0') + "23" },
            { 11, "010203132300" + none },
            { 12, "010203132300" + none },
        };
        for (const auto& [type, fields] : rows) {
            group.restrictionType = type;
            QCOMPARE(BuildTimeGroupFrame(panel, group),
                     "%NG12AB00707" + QByteArray::number(type).rightJustified(2, '0') + fields + "**\r");
        }
    }

    void calendarAndSlotFrames()
    {
        GroupCalendarRecord calendar;
        calendar.number = 1;
        calendar.typeText = QStringLiteral(u" İki Saat Arası ");
        calendar.time1 = QTime(8, 0);
        calendar.time2 = QTime(17, 0);
        calendar.date1 = QDate(2016, 1, 1);
        calendar.date2 = QDate(2016, 12, 31);
        calendar.group1 = 1;
        calendar.group2 = 2;
        calendar.group3 = 3;
        QCOMPARE(BuildGroupCalendarFrame(panel, calendar),
                 QByteArray("%CZ12AB00710080017000101201631122016000100020003**\r"));
        calendar.typeText = QStringLiteral(u"İki Tarih Arası");
        QCOMPARE(BuildGroupCalendarFrame(panel, calendar).at(11), '1');
        calendar.typeText.clear();
        QCOMPARE(BuildGroupCalendarFrame(panel, calendar).at(11), '1');

        ProgrammedSlot slot;
        slot.weekday = 1;
        slot.slot = 1;
        slot.active = true;
        slot.start = QTime(8, 0);
        slot.end = QTime(8, 15);
        slot.doors = { true, false, true, false, true, true, true, true };
        slot.relays = { false, true, false, false, true, true, true, true };
        // Doors and relays 5-8 never reach the panel.
        QCOMPARE(BuildProgrammedSlotFrame(panel, slot), QByteArray("%ZW12AB0071011080008151010000001000000**\r"));
        QCOMPARE(BuildReadSlotFrame(panel, 7, 12), QByteArray("%ZR12AB007712**\r"));
        QCOMPARE(BuildDailyApprovalFrame(panel, 7, true), QByteArray("%CS12AB007000071**\r"));
    }

    void readerAndCounterFrames()
    {
        QCOMPARE(BuildSetReaderPowerFrame(panel, 1, 14).mid(10, 3), QByteArray("130"));
        QCOMPARE(BuildSetReaderPowerFrame(panel, 1, 31).mid(10, 3), QByteArray("130"));
        QCOMPARE(BuildSetReaderPowerFrame(panel, 2, 15).mid(10, 3), QByteArray("215"));
        QCOMPARE(BuildSetBuzzerLedFrame(panel, 1, 1, 0), QByteArray("%LW12AB007110**\r"));
        QCOMPARE(BuildClearGroupInsideCountFrame(panel, 12345), QByteArray("%MS12AB0071234**\r"));
        QCOMPARE(BuildWriteZoneCounterFrame(panel, 1, 0), QByteArray("%GW12AB007010000**\r"));
        QCOMPARE(BuildResetUserAntiPassbackFrame(panel, 7), QByteArray("%SA12AB00700007**\r"));
    }

    void doorCommandText()
    {
        DoorCommandText command;
        command.doors = { true, false, false, false };
        QCOMPARE(BuildDoorCommandFrame(panel, 0, BuildDoorText(command)),
                 QByteArray("%DT12AB007100000000000000000000000000000**\r"));
        command.masterRelays = { false, false, false, true };
        command.withDoorMasterRelay = true;
        command.signalReader = true;
        command.userId = 20000;
        command.cardId = 12345;
        QCOMPARE(BuildDoorText(command), QByteArray("1000000111") + "4E20" + "0000000000012345");
        QCOMPARE(BuildDoorCommandFrame(panel, 1, "X").left(3), QByteArray("%FO"));
        QCOMPARE(BuildDoorCommandFrame(panel, 2, "X").left(3), QByteArray("%FC"));
        QVERIFY(BuildDoorCommandFrame(panel, 3, BuildDoorText(command)).isEmpty());
    }

    void settingsRecordLayoutAndRoundTrip()
    {
        PanelSettingsRecord settings;
        settings.ip = { 192, 168, 1, 40 };
        settings.subnet = { 255, 255, 255, 0 };
        settings.gateway = { 192, 168, 1, 1 };
        settings.tcpPort = 1001;
        settings.remoteIp = { 192, 168, 1, 10 };
        settings.remoteTcpPort = 5000;
        settings.name = QStringLiteral(u"Giriş Kapısı");
        settings.model = 12;
        settings.cardCount = 20000;
        settings.masterRelayTimes = { 1, 5, 10, 30 };
        settings.localCapacityValue = 9999;
        settings.sameTagBlockMinSec = 160;
        settings.globalApbGroup = 1280;
        settings.globalZone1 = 64;
        settings.globalZone2 = 999;
        settings.fireActive = 1;
        settings.doors[3].relayTime = 12;
        settings.doors[3].readerModel = 7;
        settings.doors[3].localZone = 2;
        settings.doors[3].doorType = 1;

        const QByteArray record = PanelSettingsFrame::buildRecord(settings);
        QCOMPARE(record.size(), PanelSettingsFrame::RecordLength);
        QCOMPARE(record.left(12), QByteArray("192168001040"));
        QCOMPARE(record.mid(36, 5), QByteArray("01001"));
        QCOMPARE(record.mid(53, 5), QByteArray("05000"));
        QCOMPARE(record.mid(58, 16), QByteArray("Giris Kapisi    "));
        QCOMPARE(record.mid(118, 6), QByteArray("064999"));
        QCOMPARE(record.mid(164, 12), QByteArray("112010071112"));

        PanelSettingsRecord read;
        QVERIFY(PanelSettingsFrame::parseRecord(record, read));
        settings.name = QStringLiteral("Giris Kapisi");
        QCOMPARE(read, settings);

        // Flags travel as one digit whatever the column holds; negatives as 0.
        settings.globalApb = 5;
        settings.tcpPort = -3;
        const QByteArray odd = PanelSettingsFrame::buildRecord(settings);
        QCOMPARE(odd.at(113), '1');
        QCOMPARE(odd.mid(36, 5), QByteArray("00000"));

        QCOMPARE(PanelSettingsFrame::buildFrame(panel, settings), "%DS12AB007" + odd + "**\r");
    }
};

QTEST_APPLESS_MAIN(FramesTest)
#include "FramesTest.moc"
