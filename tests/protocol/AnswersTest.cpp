#include "protocol/AnswerReading.h"
#include "protocol/CalendarCommands.h"
#include "protocol/GroupCommands.h"
#include "protocol/PanelLink.h"
#include "protocol/PanelSettingsFrame.h"
#include "protocol/PanelTransport.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"

#include <QTest>
#include <functional>
#include <utility>

namespace {

ExchangeResult answer(const QByteArray& text)
{
    return ExchangeResult{ true, text, 1 };
}

const ExchangeResult silence{};
const PanelAddress panel7(7, 0x12AB);
const QByteArray userBlock7 = "00007000001234512340100030010000090531012016";

// Texts a broken or hostile panel might send, one per way a reader can be cut short; random bytes
// are the fuzz target's.
QList<QByteArray> hostileTexts()
{
    QList<QByteArray> texts = QByteArray("|$|$$$$|**|$NC|$UC12AB007|$UC12AB0070000|$RC12AB007ABCDE**|$UR12AB0073101|"
                                         "$PR12AB007O|$ZR12AB007|$UC12AB007-0007-------**|%NC12AB007O**")
                                  .split('|');
    texts << QByteArray(3, '\0') << QByteArray(10 * 1024 * 1024, 'x') << QByteArray(10 * 1024 * 1024, '$');
    return texts;
}

// A panel that answers every request at once with the same text; without a text it hangs up, so
// a silent panel costs no time-out.
class CannedTransport : public PanelTransport
{
public:
    explicit CannedTransport(QByteArray answer)
        : m_answer(std::move(answer))
    { }

    bool open(const QString&, quint16, int) override { return m_open = true; }
    bool isOpen() const override { return m_open; }
    bool send(const QByteArray&) override
    {
        m_pending = m_answer;
        m_open = !m_answer.isEmpty();
        return true;
    }
    QByteArray receive(QDeadlineTimer) override { return std::exchange(m_pending, {}); }
    void close() override { m_open = false; }

private:
    QByteArray m_answer;
    QByteArray m_pending;
    bool m_open = false;
};

using Command = std::function<CommandOutcome(PanelLink&)>;

CommandOutcome outcomeOf(const Command& command, const QByteArray& answer)
{
    PanelLink link(std::make_unique<CannedTransport>(answer));
    link.setSettings({ 0, 0, 0 });
    link.ConnectPanel(QStringLiteral("127.0.0.1"), 4001);
    return command(link);
}

} // namespace

class AnswersTest : public QObject
{
    Q_OBJECT

private slots:
    // Every command that only confirms, against the answer forms that tell its conventions apart.
    void acknowledgedCommandsMapEachAnswerForm()
    {
        using O = CommandOutcome;
        // Outcomes for: "O" status, "E" status, another panel's answer, another code first, the
        // code without a "$", silence.
        const QList<O> byStatus{ O::Accepted, O::Refused, O::OtherCode, O::Accepted, O::OtherCode, O::NoAnswer };
        const QList<O> byEcho{ O::Accepted, O::Accepted, O::OtherCode, O::OtherCode, O::OtherCode, O::NoAnswer };
        const QList<O> byCodeAnywhere{ O::Accepted, O::Accepted, O::OtherCode, O::Accepted, O::Accepted, O::NoAnswer };
        const QList<O> byAnyAnswer{ O::Accepted, O::Accepted, O::Accepted, O::Accepted, O::Accepted, O::NoAnswer };

        const QDateTime now(QDate(2016, 1, 31), QTime(9, 5, 3));
        struct Row
        {
            QByteArray code;
            Command command;
            QList<O> expected;
        };
        const auto p = panel7;
        const QList<Row> rows{
            { "NC", [&](PanelLink& l) { return SendNewCard(l, p, UserRecord{}, now).outcome(); }, byStatus },
            { "DC", [&](PanelLink& l) { return DeleteCard(l, p, 7).outcome(); }, byAnyAnswer },
            { "EC", [&](PanelLink& l) { return EraseAllCards(l, p).outcome(); }, byCodeAnywhere },
            { "MU", [&](PanelLink& l) { return SendUserCount(l, p, 7).outcome(); }, byStatus },
            { "DR", [&](PanelLink& l) { return SetPanelClock(l, p, now).outcome(); }, byEcho },
            { "TN", [&](PanelLink& l) { return SendGroup(l, p, AccessGroupRecord{}).outcome(); }, byStatus },
            { "TE", [&](PanelLink& l) { return EraseGroups(l, p).outcome(); }, byCodeAnywhere },
            { "EG", [&](PanelLink& l) { return EraseTimeGroups(l, p).outcome(); }, byCodeAnywhere },
            { "NG", [&](PanelLink& l) { return SendTimeGroup(l, p, TimeGroupRecord{}).outcome(); }, byStatus },
            { "DS", [&](PanelLink& l) { return SendPanelSettings(l, p, PanelSettingsRecord{}).outcome(); }, byStatus },
            { "PS", [&](PanelLink& l) { return SetReaderPower(l, p, 1, 20).outcome(); }, byStatus },
            { "LW", [&](PanelLink& l) { return SetBuzzerLed(l, p, 1, 1, 0).outcome(); }, byStatus },
            { "ES", [&](PanelLink& l) { return EraseAllAccessCounters(l, p).outcome(); }, byEcho },
            { "EP", [&](PanelLink& l) { return EraseAccessCounter(l, p, 7).outcome(); }, byEcho },
            { "CS", [&](PanelLink& l) { return SendDailyApproval(l, p, 7, true).outcome(); }, byStatus },
            { "CZ", [&](PanelLink& l) { return SendGroupCalendar(l, p, GroupCalendarRecord{}).outcome(); }, byStatus },
            { "ZW", [&](PanelLink& l) { return SendProgrammedSlot(l, p, ProgrammedSlot{}).outcome(); }, byStatus },
            { "EM", [&](PanelLink& l) { return EraseRecordMemory(l, p).outcome(); }, byEcho },
            { "MA", [&](PanelLink& l) { return ClearAllInsideCounts(l, p).outcome(); }, byEcho },
            { "MS", [&](PanelLink& l) { return ClearGroupInsideCount(l, p, 3).outcome(); }, byEcho },
            { "GW", [&](PanelLink& l) { return WriteZoneCounter(l, p, 1, 42).outcome(); }, byEcho },
            { "AS", [&](PanelLink& l) { return ClearAlarm(l, p).outcome(); }, byEcho },
            { "SA", [&](PanelLink& l) { return ResetUserAntiPassback(l, p, 7).outcome(); }, byEcho },
            { "PA", [&](PanelLink& l) { return ResetAllAntiPassback(l, p).outcome(); }, byEcho },
            { "DT", [&](PanelLink& l) { return DoorCommand(l, p, 0, QByteArray(30, '0')).outcome(); }, byStatus },
            { "FO", [&](PanelLink& l) { return DoorCommand(l, p, 1, QByteArray(30, '0')).outcome(); }, byStatus },
            { "FC", [&](PanelLink& l) { return DoorCommand(l, p, 2, QByteArray(30, '0')).outcome(); }, byStatus },
        };
        for (const Row& row : rows) {
            const QList<QByteArray> forms{
                "$" + row.code + "12AB007O**",           "$" + row.code + "12AB007E**",
                "$" + row.code + "12AB008O**",           "\r\n$ZZ12AB007E**$" + row.code + "12AB007O**\r",
                row.code + "12AB007 without a dollar**", QByteArray(),
            };
            for (int form = 0; form < forms.size(); ++form) {
                const CommandOutcome outcome = outcomeOf(row.command, forms.at(form));
                QVERIFY2(outcome == row.expected.at(form),
                         qPrintable(QStringLiteral("%1, answer form %2: outcome %3")
                                        .arg(QString::fromLatin1(row.code))
                                        .arg(form)
                                        .arg(int(outcome))));
            }
        }
    }

    void readCardChecks()
    {
        using O = CommandOutcome;
        const QByteArray good = "$UC12AB007" + userBlock7 + "**";
        const CommandResult<UserRecord> read = InterpretReadCard(answer(good), panel7, 7);
        QVERIFY(read.isAccepted());
        QCOMPARE(read.data().id, 7); // the block's fields are the user block's test
        QCOMPARE(InterpretReadCard(silence, panel7, 7).outcome(), O::NoAnswer);
        // Failures the operator is asked about: another user, the empty slot's dashes, a block that
        // does not read.
        QCOMPARE(InterpretReadCard(answer(good), panel7, 8).outcome(), O::OtherCode);
        QCOMPARE(InterpretReadCard(answer("$UC12AB00700007" + QByteArray(39, '-') + "**"), panel7, 7).outcome(),
                 O::OtherCode);
        QCOMPARE(InterpretReadCard(answer("$UC12AB007" + userBlock7.left(15) + "12x4" + userBlock7.mid(19) + "**"),
                                   panel7, 7)
                     .outcome(),
                 O::OtherCode);
        // A card that does not read above 0 is a slot without a card, passed over in silence. The
        // stretch starts on the user number's last digit: user 7 with card 0 passes, user 10 with
        // card 0 does not.
        const CommandResult<UserRecord> zeroCard
            = InterpretReadCard(answer("$UC12AB007000070000000000" + userBlock7.mid(15) + "**"), panel7, 7);
        QVERIFY(zeroCard.isAccepted());
        QCOMPARE(zeroCard.data().cardId, 0);
        QCOMPARE(
            InterpretReadCard(answer("$UC12AB007000100000000000" + userBlock7.mid(15) + "**"), panel7, 10).outcome(),
            O::Refused);
        QCOMPARE(InterpretReadCard(answer("$UC12AB00700007X00001234" + userBlock7.mid(14) + "**"), panel7, 7).outcome(),
                 O::Refused);
    }

    void recordCountAndClock()
    {
        using O = CommandOutcome;
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00700151**"), panel7), CommandResult<qint32>::accepted(150));
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00700001**"), panel7), CommandResult<qint32>::accepted(0));
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00700000**"), panel7).outcome(), O::Refused);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB0070A001**"), panel7).outcome(), O::Refused);
        QCOMPARE(InterpretRecordCount(answer("$MU12AB007O**$RC12AB00700151**"), panel7).outcome(), O::OtherCode);
        QCOMPARE(InterpretRecordCount(silence, panel7).outcome(), O::NoAnswer);

        const CommandResult<PanelClock> clock = InterpretPanelClock(answer("$UR12AB007310116090503070**"), panel7);
        QVERIFY(clock.isAccepted());
        QCOMPARE(clock.data().text, QStringLiteral("31/01/2016 09:05:03"));
        QCOMPARE(clock.data().time, QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)));
        QCOMPARE(InterpretPanelClock(answer("$DR12AB007O**0000000000000"), panel7).outcome(), O::OtherCode);
        QCOMPARE(InterpretPanelClock(answer("$UR12AB00731011609xx03070**"), panel7).outcome(), O::Refused);
        QCOMPARE(InterpretPanelClock(silence, panel7).outcome(), O::NoAnswer);
    }

    void readerValuesCountersAndSlots()
    {
        using O = CommandOutcome;
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB007O25**"), "PR"), CommandResult<qint32>::accepted(25));
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB007E25**"), "PR").outcome(), O::Refused);
        QCOMPARE(InterpretTwoDigitValue(answer("$LR12AB007O100**"), "LR"), CommandResult<qint32>::accepted(10));
        QCOMPARE(InterpretTwoDigitValue(answer("$LR12AB007O1x0**"), "LR").outcome(), O::Refused);
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB007O25**"), "LR").outcome(), O::OtherCode);
        QCOMPARE(InterpretTwoDigitValue(silence, "LR").outcome(), O::NoAnswer);

        using AnswerReading::textField;
        QCOMPARE(textField(answer("$GR12AB0070042**"), "GR", 4), CommandResult<QByteArray>::accepted("0042"));
        QCOMPARE(textField(answer("$MR12AB0070042**"), "GR", 4).outcome(), O::OtherCode);
        QCOMPARE(textField(silence, "GR", 4).outcome(), O::NoAnswer);
        QCOMPARE(textField(answer("$RP12AB007005010200**"), "RP", 9), CommandResult<QByteArray>::accepted("005010200"));

        const QByteArray slotAnswer = "$ZR12AB007O7121123018451010000001010000**";
        QCOMPARE(InterpretReadSlot(answer(slotAnswer), panel7), CommandResult<QByteArray>::accepted(slotAnswer));
        QCOMPARE(InterpretReadSlot(answer("$ZR12AB007E" + QByteArray(28, '0') + "**"), panel7).outcome(), O::Refused);
        QCOMPARE(InterpretReadSlot(silence, panel7).outcome(), O::NoAnswer);
        ProgrammedSlot slot;
        slot.doors[4] = true;
        QVERIFY(ParseReadSlotAnswer(slotAnswer, slot));
        QVERIFY(slot.active);
        QCOMPARE(slot.start, QTime(12, 30));
        QCOMPARE(slot.end, QTime(18, 45));
        QCOMPARE(slot.doors, (std::array<bool, 8>{ true, false, true, false, true, false, false, false }));
        QCOMPARE(slot.relays, (std::array<bool, 8>{ false, true, false, true, false, false, false, false }));
        QVERIFY(!ParseReadSlotAnswer("$ZR12AB007O71211299", slot));
    }

    void anotherPanelsAnswerIsNotTaken()
    {
        using namespace AnswerReading;
        using O = CommandOutcome;
        const QByteArray nc = panel7.answerCode("NC");
        QCOMPARE(nc, QByteArray("NC12AB007"));
        // Another panel number for every confirming command is the table above; here a serial.
        QCOMPARE(acceptedByO(answer("$NC12AC007O**"), nc), O::OtherCode);
        QCOMPARE(acceptedByO(answer("$NC12AB008O**$NC12AB007O**"), nc), O::Accepted);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00800151**"), panel7).outcome(), O::OtherCode);
        QCOMPARE(InterpretPanelClock(answer("$UR12AB006310116090503070**"), panel7).outcome(), O::OtherCode);
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB009O25**"), panel7.answerCode("PR")).outcome(), O::OtherCode);

        // A stray answer of another panel before this panel's own: its own is the one read.
        const QByteArray ours = "$UC12AB007" + userBlock7 + "**";
        const QByteArray stray = "$UC12AB008" + userBlock7 + "**";
        QVERIFY(InterpretReadCard(answer(stray + ours), panel7, 7).isAccepted());
        QCOMPARE(InterpretReadCard(answer(stray), panel7, 7).outcome(), O::OtherCode);
    }

    void hostileBytesGiveFailuresNotCrashes()
    {
        const QList<QByteArray> texts = hostileTexts();
        for (const QByteArray& text : texts) {
            const ExchangeResult result = answer(text);
            QVERIFY(AnswerReading::acceptedByO(result, "NC") != CommandOutcome::Accepted);
            QVERIFY(!InterpretReadCard(result, panel7, 7).isAccepted());
            QVERIFY(!InterpretRecordCount(result, panel7).isAccepted());
            QVERIFY(!InterpretPanelClock(result, panel7).isAccepted());
            QVERIFY(!InterpretTwoDigitValue(result, "PR").isAccepted());
            QVERIFY(!InterpretReadSlot(result, panel7).isAccepted());
            QVERIFY(AnswerReading::textField(result, "GR", 4).data().size() <= 4);
            ProgrammedSlot slot;
            QVERIFY(!ParseReadSlotAnswer(text, slot));
        }
    }
};

QTEST_APPLESS_MAIN(AnswersTest)
#include "AnswersTest.moc"
