#include "sim/SimPanel.h"

#include "sim/SimFault.h"
#include "sim/SimPanelSettings.h"
#include "sim/SimText.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
// Requests to panel 7, serial 12AB, as the link hands them over (the carriage return already cut).
QByteArray request(const char* code, const QByteArray& fields = QByteArray())
{
    return QByteArray("%") + code + "12AB007" + fields + "**";
}

QByteArray answer(SimPanel& panel, const char* code, const QByteArray& fields = QByteArray())
{
    return panel.handleRequest(request(code, fields)).chunks.join();
}

QByteArray settingsWith(int pos, const QByteArray& value)
{
    QByteArray record = SimPanelSettings::defaults(5000, QString(), 0, 7).record;
    record.replace(pos - 1, value.size(), value);
    return record;
}
} // namespace

class SimPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersOnlyItsOwnAddress()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        QCOMPARE(panel.handleRequest("%RC12AB007**").chunks, QList<QByteArray>{ "$RC12AB00700001**" });
        QVERIFY(panel.handleRequest("%RC12AC007**").chunks.isEmpty());
        QVERIFY(panel.handleRequest("%RC12AB008**").chunks.isEmpty());
        QVERIFY(panel.handleRequest("%RC12AB07**").chunks.isEmpty());
        QVERIFY(panel.handleRequest("%XX12AB007**").chunks.isEmpty());
        // The alarm reset with serial 0000 and panel 000 is for every panel.
        QCOMPARE(panel.handleRequest("%AS0000000**").chunks, QList<QByteArray>{ "$AS12AB007O**" });
        QCOMPARE(panel.requestCount("RC"), 1);
    }

    void keepsUsers()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        const QByteArray block = "00007000001234512340100030010000090531012016";
        QCOMPARE(answer(panel, "NC", block), QByteArray("$NC12AB007O**"));
        QCOMPARE(answer(panel, "UC", "00007"), "$UC12AB007" + block + "**");

        // Rewriting a user moves its card.
        QByteArray other = block;
        other.replace(5, 10, "0000054321");
        QCOMPARE(answer(panel, "NC", other), QByteArray("$NC12AB007O**"));
        QCOMPARE(panel.presentCard(1, 12345).code, PassageCode::UnknownCard);

        QCOMPARE(answer(panel, "UC", "00008"), "$UC12AB00700008" + QByteArray(39, '-') + "**");
        QCOMPARE(answer(panel, "DC", "00007"), QByteArray("$DC12AB007O**"));
        QVERIFY(!panel.user(7));
        // Malformed blocks and numbers outside 1..20000 are refused.
        QByteArray bad = block;
        bad[7] = 'x';
        QCOMPARE(answer(panel, "NC", bad), QByteArray("$NC12AB007E**"));
        QCOMPARE(answer(panel, "NC", "20001" + block.mid(5)), QByteArray("$NC12AB007E**"));
        QCOMPARE(answer(panel, "NC", block.left(43)), QByteArray("$NC12AB007E**"));

        QCOMPARE(answer(panel, "NC", block), QByteArray("$NC12AB007O**"));
        QCOMPARE(answer(panel, "MU", "00250"), QByteArray("$MU12AB007O**"));
        QCOMPARE(answer(panel, "EC"), QByteArray("$EC12AB007O**"));
        panel.inspect([](const SimPanelState& s) { QVERIFY(s.users.isEmpty() && s.cardIndex.isEmpty()); });
    }

    void answersLikeTheDocumentedExamples()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        panel.seedRecords(150);
        QCOMPARE(answer(panel, "RC"), QByteArray("$RC12AB00700151**"));

        QCOMPARE(answer(panel, "DR", "31011609050307"), QByteArray("$DR12AB007O**"));
        const QByteArray clock = answer(panel, "UR"); // the seconds have moved on
        QVERIFY2(clock.startsWith("$UR12AB0073101160905") && clock.endsWith("070**") && clock.size() == 27,
                 clock.constData());
        QCOMPARE(answer(panel, "DR", "31021609050307"), QByteArray("$DR12AB007E**"));

        QCOMPARE(answer(panel, "PS", "125"), QByteArray("$PS12AB007O**"));
        QCOMPARE(answer(panel, "PR", "1"), QByteArray("$PR12AB007O25**"));
        QCOMPARE(answer(panel, "PS", "114"), QByteArray("$PS12AB007E**"));
        QCOMPARE(answer(panel, "LW", "110"), QByteArray("$LW12AB007O**"));
        QCOMPARE(answer(panel, "LR", "1"), QByteArray("$LR12AB007O100**"));

        QCOMPARE(answer(panel, "ZW", "1011080008151010000001000000"), QByteArray("$ZW12AB007O**"));
        QCOMPARE(answer(panel, "ZR", "101"), QByteArray("$ZR12AB007O1011080008151010000001000000**"));
        // Every weekday has its 16 slots: one never written reads as inactive; slot 17 is no slot.
        QCOMPARE(answer(panel, "ZR", "102"), QByteArray("$ZR12AB007O1020000000000000000000000000**"));
        QCOMPARE(answer(panel, "ZR", "117"), "$ZR12AB007E" + QByteArray(28, '0') + "**");

        QCOMPARE(answer(panel, "TN", "0003001002000016255019999021110000000101"), QByteArray("$TN12AB007O**"));
        QCOMPARE(answer(panel, "CZ", "10080017000101201631122016000100020003"), QByteArray("$CZ12AB007O**"));
        QCOMPARE(answer(panel, "CS", "000071"), QByteArray("$CS12AB007O**"));
        // What the panel reads from these is the round trip's: station and panel agree field by field.

        panel.modify([](SimPanelState& s) {
            s.insideCounts[3] = 12;
            SimGroup limited;
            limited.number = 4;
            limited.accessLimit = 8;
            s.groups.insert(4, limited);
            SimUser user;
            user.id = 7;
            user.card = 12345;
            user.group = 4;
            s.putUser(user);
            s.accessCounts[7] = 3;
            s.canteenCounts[7] = { 1, 2, 0 };
        });
        QCOMPARE(answer(panel, "MR", "0003"), QByteArray("$MR12AB0070012**"));
        QCOMPARE(answer(panel, "MS", "0003"), QByteArray("$MS12AB007O**"));
        QCOMPARE(answer(panel, "MR", "0003"), QByteArray("$MR12AB0070000**"));
        QCOMPARE(answer(panel, "RP", "00007"), QByteArray("$RP12AB007005010200**"));
        QCOMPARE(answer(panel, "EP", "00007"), QByteArray("$EP12AB007O**"));
        QCOMPARE(answer(panel, "RP", "00007"), QByteArray("$RP12AB007008000000**"));
        QCOMPARE(answer(panel, "GW", "020042"), QByteArray("$GW12AB007O**"));
        QCOMPARE(answer(panel, "GR", "02"), QByteArray("$GR12AB0070042**"));
        QCOMPARE(answer(panel, "GR", "03"), "$GR12AB007E" + QByteArray(3, '0') + "**");
    }

    void refusalsAreAsLongAsFullAnswers()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        SimFault refuse;
        refuse.mode = SimFault::Mode::Refuse;
        panel.setFault(refuse);
        // What the station waits for, per command.
        const QList<QPair<const char*, int>> awaited{ { "NC", 13 }, { "UC", 54 }, { "RC", 13 }, { "UR", 27 },
                                                      { "LR", 16 }, { "PR", 13 }, { "ZR", 26 }, { "MR", 15 },
                                                      { "GR", 16 }, { "RP", 13 }, { "DD", 13 }, { "EM", 13 },
                                                      { "DT", 13 } };
        for (const auto& [code, length] : awaited) {
            const QByteArray text = answer(panel, code);
            QVERIFY2(text.size() >= length && text.startsWith(QByteArray("$" + QByteArray(code) + "12AB007E"))
                         && text.endsWith("**"),
                     code);
        }
        // A refusing panel carries nothing out.
        QCOMPARE(answer(panel, "NC", "00007000001234512340100030010000090531012016").at(10), 'E');
        QVERIFY(!panel.user(7));
    }

    void recordMemoryIsARingWithItsCapacity()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        const QDateTime first(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC);
        panel.seedRecords(40005, first);
        QCOMPARE(panel.recordCount(), 40000);
        QCOMPARE(panel.records().first().time, first.addSecs(5));
        QCOMPARE(answer(panel, "RC"), QByteArray("$RC12AB00740001**"));

        // Temporary groups take memory: the panel keeps the newest 30000.
        QCOMPARE(answer(panel, "DS", settingsWith(125, "1")), QByteArray("$DS12AB007O**"));
        QCOMPARE(panel.recordCount(), 30000);
        QCOMPARE(panel.records().last().time, first.addSecs(40004));

        QCOMPARE(answer(panel, "EM"), QByteArray("$EM12AB007O**"));
        QCOMPARE(panel.recordCount(), 0);
    }

    void downloadStreamsRecordsThenEndMarker()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        SimRecord record;
        record.door = 2;
        record.localZone = 1;
        record.direction = Direction::Exit;
        record.code = PassageCode::Granted;
        record.userId = 7;
        record.time = QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3), Qt::UTC);
        panel.addRecord(record);
        record.code = PassageCode::ProgrammedClose;
        record.userId = 20002;
        panel.addRecord(record);
        QCOMPARE(answer(panel, "DD"),
                 QByteArray("$DD0002110100007310116090503**$DD0002111020002310116090503**$FD12AB007**"));
        // Downloading does not erase.
        QCOMPARE(panel.recordCount(), 2);
    }

    void settingsWriteRenumbersAndConfigures()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        QByteArray record = settingsWith(112, "11"); // anti-passback in both local zones
        record.replace(42 - 1, 12 + 5,
                       "127000000001"
                       "06000");
        QCOMPARE(panel.handleRequest("%DS12AB009" + record + "**").chunks, QList<QByteArray>{ "$DS12AB009O**" });
        QCOMPARE(panel.number(), 9);
        QVERIFY(panel.handleRequest("%RC12AB007**").chunks.isEmpty());
        QCOMPARE(panel.pushHost(), QStringLiteral("127.0.0.1"));
        QCOMPARE(panel.pushPort(), quint16(6000));
        panel.inspect([&](const SimPanelState& s) {
            QCOMPARE(s.settings.record, record);
            QCOMPARE(s.settings.localAntiPassback, (std::array<bool, 2>{ true, true }));
        });

        // A push address outside this machine is not taken.
        record.replace(42 - 1, 12, "010000000005");
        QCOMPARE(panel.handleRequest("%DS12AB009" + record + "**").chunks, QList<QByteArray>{ "$DS12AB009O**" });
        QCOMPARE(panel.pushHost(), QStringLiteral("127.0.0.1"));
        // A record with a letter in a number field is refused and changes nothing.
        record[0] = 'x';
        QCOMPARE(panel.handleRequest("%DS12AB003" + record + "**").chunks, QList<QByteArray>{ "$DS12AB003E**" });
        QCOMPARE(panel.number(), 9);
    }

    void doorCommandsLeaveOperationRecords()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        // Trigger door 1 and master relay 2 for user 20000 (4E20) with card 12345.
        QCOMPARE(answer(panel, "DT",
                        "100001001"
                        "0"
                        "4E20"
                        "0000000000012345"),
                 QByteArray("$DT12AB007O**"));
        QList<SimRecord> records = panel.records();
        QCOMPARE(records.size(), 2);
        QCOMPARE(records[0].code, PassageCode::OperatorTrigger);
        QCOMPARE(records[0].userId, 20001);
        QCOMPARE(records[1].userId, 20006);
        // The doors' states after each command are the door operations' test.
        QCOMPARE(answer(panel, "FO", "0010000000000000000000000000000"), QByteArray("$FO12AB007O**"));
        QCOMPARE(answer(panel, "FC", "0010000000000000000000000000000"), QByteArray("$FC12AB007O**"));
        records = panel.records();
        QCOMPARE(records.size(), 4);
        QCOMPARE(records[3].code, PassageCode::OperatorClose);

        QCOMPARE(answer(panel, "DT", "10000000"), QByteArray("$DT12AB007E**"));
        QCOMPARE(answer(panel, "DT", "2000000000000000000000000000000"), QByteArray("$DT12AB007E**"));
        QCOMPARE(panel.recordCount(), 4);
    }

    void faultsShapeTheReply()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        SimFault fault;

        // Silent for two requests of one command only, then itself again.
        fault.mode = SimFault::Mode::Silent;
        fault.remaining = 2;
        fault.codes = { "NC" };
        panel.setFault(fault);
        const QByteArray block = "00007000001234512340100030010000090531012016";
        QCOMPARE(answer(panel, "RC"), QByteArray("$RC12AB00700001**"));
        QVERIFY(answer(panel, "NC", block).isEmpty());
        QVERIFY(answer(panel, "NC", block).isEmpty());
        QVERIFY(!panel.user(7));
        QCOMPARE(answer(panel, "NC", block), QByteArray("$NC12AB007O**"));
        QCOMPARE(panel.fault().mode, SimFault::Mode::None);

        // Slow and dropped answers are seen on a real link in the host's tests; noise, garbage and
        // another panel's answer meet the station in the record retrieval's and command line's tests.
        fault = SimFault();
        // The cut applies to downloads only and ends in the middle of a record, without end marker.
        fault.mode = SimFault::Mode::CutStream;
        fault.cutAfter = 3;
        panel.setFault(fault);
        panel.seedRecords(10);
        QCOMPARE(answer(panel, "RC"), QByteArray("$RC12AB00700011**"));
        const QByteArray cut = answer(panel, "DD");
        QCOMPARE(cut.size(), 3 * 30 + 15);
        QVERIFY(!cut.contains("$FD"));
        QCOMPARE(cut.count("$DD"), 4);
    }

    void faultsParseFromText()
    {
        QString error;
        auto fault = SimFault::parse(
            { QStringLiteral("slow"), QStringLiteral("codes=nc,UC"), QStringLiteral("count=2") }, &error);
        QVERIFY(fault);
        QCOMPARE(fault->mode, SimFault::Mode::Slow);
        QCOMPARE(fault->delayMs, 500);
        QCOMPARE(fault->remaining, 2);
        QVERIFY(fault->appliesTo("NC") && fault->appliesTo("UC") && !fault->appliesTo("RC"));
        QCOMPARE(fault->describe(), QStringLiteral("slow delay=500 count=2 codes=NC,UC"));

        fault
            = SimFault::parse({ QStringLiteral("drop"), QStringLiteral("skip=2"), QStringLiteral("codes=NC") }, &error);
        QVERIFY(fault && fault->skip == 2);
        QCOMPARE(fault->describe(), QStringLiteral("drop skip=2 codes=NC"));
        for (const QString& wrong :
             { u"drop skip=-1"_s, u"sleepy"_s, u"slow delay=-4"_s, u"slow codes=ABCD"_s, QString() }) {
            error.clear();
            QVERIFY2(!SimFault::parse(wrong.split(u' ', Qt::SkipEmptyParts), &error) && !error.isEmpty(),
                     qPrintable(wrong));
        }
        QVERIFY(!SimFault::parse({ QStringLiteral("none") }, &error)->active());
    }

    void datagramsAnswerStatusAndSettings()
    {
        SimPanel panel(7, 0x12AB, 5000, QStringLiteral("127.0.0.1"), 6000);
        // Doors closed, reader 4 off line, zone 1 full, fire and alarm.
        panel.setAlarm(true, true);
        panel.modify([](SimPanelState& s) {
            s.lineStates[3] = 0;
            s.settings.localCapacityOn = true;
            s.settings.localCapacity = 2;
            s.zoneCounters[1] = 2;
        });
        QCOMPARE(panel.handleDatagram("%GMS**"),
                 QByteArray("$GMS12AB007"
                            "01010100"
                            "0000"
                            "1"
                            "00000"
                            "11"
                            "000"
                            "**"));
        // The search answer, settings by datagram and the alarm reset reach simulated panels in the
        // status, search and panel settings operations' tests.
    }

    void pushesPassagesAndStatus()
    {
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        QSignalSpy spy(&panel, &SimPanel::pushFrame);
        SimUser user;
        user.id = 7;
        user.card = 12345;
        user.group = 1;
        panel.putUser(user);
        panel.modify([](SimPanelState& s) {
            SimGroup group;
            group.number = 1;
            group.doorAllowed = { true, true, true, true };
            s.groups.insert(1, group);
        });
        const QDateTime moment(QDate(2016, 1, 31), QTime(9, 5, 3), Qt::UTC);
        QCOMPARE(panel.presentCard(2, 12345, Direction::Entry, moment).code, PassageCode::Granted);
        QCOMPARE(spy.count(), 0); // nowhere to push to
        QCOMPARE(panel.recordCount(), 1);

        panel.setPushTarget(QStringLiteral("127.0.0.1"), 6000);
        panel.presentCard(2, 12345, Direction::Entry, moment);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy[0][0].toByteArray(), QByteArray("%CD007211000070000012345310116090503**"));
        QCOMPARE(spy[0][1].toString(), QStringLiteral("127.0.0.1"));
        QCOMPARE(spy[0][2].value<quint16>(), quint16(6000));
        QCOMPARE(spy[0][3].toBool(), false);
        QVERIFY(spy[1][0].toByteArray().startsWith("%CMS00701110101"));

        // Settings that ask for status only, then for datagrams.
        spy.clear();
        panel.handleRequest(request("DS", settingsWith(106, "2")));
        panel.presentCard(1, 12345, std::nullopt, moment);
        QCOMPARE(spy.count(), 1);
        QVERIFY(spy[0][0].toByteArray().startsWith("%CMS"));
        spy.clear();
        panel.handleRequest(request("DS", settingsWith(106, "11")));
        panel.pressExitButton(3);
        QCOMPARE(spy.count(), 2);
        QVERIFY(spy[0][0].toByteArray().startsWith("%CD007"
                                                   "382"
                                                   "20003"
                                                   "0000000000"));
        QCOMPARE(spy[0][2].value<quint16>(), quint16(11001));
        QCOMPARE(spy[0][3].toBool(), true);
    }

    void randomCardsComeFromEveryHolderAlike()
    {
        // The panel's random source starts from its number and serial, so the draws repeat.
        SimPanel panel(7, 0x12AB, 5000, QString(), 0);
        const auto present = [&panel](int times) {
            QHash<int, int> seen; // user number (0: a stranger's card) -> presentations
            for (int i = 0; i < times; ++i)
                ++seen[panel.presentRandomCard().userId];
            return seen;
        };
        // Forty holders spread over the slots, as a site fills them.
        QList<int> ids;
        for (int i = 1; i <= 40; ++i) {
            SimUser user;
            user.id = i * 487;
            user.card = 900000 + i;
            panel.putUser(user);
            ids << user.id;
        }
        QHash<int, int> seen = present(8000);
        // About 180 each; a loose bound that a skewed pick (one holder most of the time) breaks.
        for (const int id : ids)
            QVERIFY2(seen.value(id) > 60 && seen.value(id) < 540, qPrintable(QString::number(id)));
        QVERIFY(seen.value(0) > 400 && seen.value(0) < 1200); // one in ten is a stranger

        // Deleted holders are never drawn again and the rest share their turns (about 180 each, and
        // strangers stay one in ten).
        for (int i = 0; i < 30; ++i)
            QCOMPARE(answer(panel, "DC", QByteArray::number(ids.at(i)).rightJustified(5, '0')),
                     QByteArray("$DC12AB007O**"));
        seen = present(2000);
        for (int i = 0; i < 40; ++i)
            QVERIFY(i < 30 ? !seen.contains(ids.at(i)) : seen.value(ids.at(i)) > 90);
        QVERIFY(seen.value(0) < 400);

        // After the memory is erased only the users written since are drawn.
        QCOMPARE(answer(panel, "EC"), QByteArray("$EC12AB007O**"));
        SimUser late;
        late.id = 3;
        late.card = 3333;
        panel.putUser(late);
        seen = present(1000);
        QCOMPARE(seen.size(), 2);
        QVERIFY(seen.value(3) > 800);
    }
};

QTEST_GUILESS_MAIN(SimPanelTest)
#include "SimPanelTest.moc"
