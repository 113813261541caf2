#include "protocol/AnswerReading.h"
#include "protocol/CalendarCommands.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

ExchangeResult answer(const QByteArray& text)
{
    return ExchangeResult{ true, text, 1 };
}

const ExchangeResult silence{};
const PanelAddress panel7(7, 0x12AB);
const QByteArray userBlock7 = "00007000001234512340100030010000090531012016";

// Texts a broken or hostile panel might send.
QList<QByteArray> hostileTexts()
{
    QList<QByteArray> texts = {
        "",
        "$",
        "$$$$",
        "**",
        "$NC",
        "$UC12AB007",
        "$UC12AB0070000",
        "$RC12AB007ABCDE**",
        "$UR12AB0073101",
        "$PR12AB007O",
        "$ZR12AB007",
        QByteArray(3, '\0'),
        "$UC12AB007-0007-------**",
        "%NC12AB007O**",
    };
    texts.append(QByteArray(10 * 1024 * 1024, 'x'));
    texts.append(QByteArray(10 * 1024 * 1024, '$'));
    QRandomGenerator random(410);
    for (int i = 0; i < 50; ++i) {
        QByteArray noise(random.bounded(1, 200), Qt::Uninitialized);
        for (char& ch : noise)
            ch = static_cast<char>(random.bounded(256));
        texts.append(noise);
    }
    return texts;
}

} // namespace

class AnswersTest : public QObject
{
    Q_OBJECT

private slots:
    void acknowledgementConventions()
    {
        using namespace AnswerReading;
        QCOMPARE(acceptedByO(answer("$NC12AB007O**"), "NC"), 1);
        QCOMPARE(acceptedByO(answer("$NC12AB007E**"), "NC"), -1);
        QCOMPARE(acceptedByO(answer("$MU12AB007O**"), "NC"), -1);
        QCOMPARE(acceptedByO(silence, "NC"), 0);
        // The answer is searched for, so bytes before it do not matter.
        QCOMPARE(acceptedByO(answer("\r\n$TN12AB007E**$NC12AB007O**\r"), "NC"), 1);

        QCOMPARE(acceptedByOOrFail(silence, "PS"), -1);
        QCOMPARE(acceptedByOOrFail(answer("$PS12AB007O**"), "PS"), 1);

        // The echo convention looks only at the first "$" and turns the numbers around.
        QCOMPARE(echoedCode(answer("$EM12AB007E**"), "EM"), 1);
        QCOMPARE(echoedCode(answer("$AS12AB007O**$EM12AB007O**"), "EM"), 0);
        QCOMPARE(echoedCode(silence, "EM"), -1);

        QCOMPARE(codeAnywhere(answer("garbage EC garbage"), "EC"), 1);
        QCOMPARE(codeAnywhere(answer("$TN12AB007O**"), "TE"), -1);
        QCOMPARE(codeAnywhere(silence, "TE"), 0);

        QCOMPARE(anyAnswer(answer("$DC12AB007E**")), 1);
        QCOMPARE(anyAnswer(silence), 0);

        QCOMPARE(textField(answer("$GR12AB0070042**"), "GR", 4), QStringLiteral("0042"));
        QCOMPARE(textField(answer("$MR12AB0070042**"), "GR", 4), QStringLiteral("ERROR"));
        QCOMPARE(textField(silence, "GR", 4), QStringLiteral("ERROR"));
        QCOMPARE(textField(answer("$RP12AB007005010200**"), "RP", 9), QStringLiteral("005010200"));
    }

    void readCardChecks()
    {
        const QByteArray good = "$UC12AB007" + userBlock7 + "**";
        QCOMPARE(InterpretReadCard(answer(good), panel7, 7), QString::fromLatin1(good));
        QCOMPARE(InterpretReadCard(silence, panel7, 7), QStringLiteral("TIMEOUT"));
        QCOMPARE(InterpretReadCard(answer(good), panel7, 8), QStringLiteral("ERROR"));
        QCOMPARE(InterpretReadCard(answer("$UC12AB00700007" + QByteArray(39, '-') + "**"), panel7, 7),
                 QStringLiteral("ERROR"));
        // The card stretch starts on the user number's last digit: user 7 with card 0 passes,
        // user 10 with card 0 does not.
        QCOMPARE(InterpretReadCard(answer("$UC12AB007000070000000000" + userBlock7.mid(15) + "**"), panel7, 7),
                 QString::fromLatin1("$UC12AB007000070000000000" + userBlock7.mid(15) + "**"));
        QCOMPARE(InterpretReadCard(answer("$UC12AB007000100000000000" + userBlock7.mid(15) + "**"), panel7, 10),
                 QStringLiteral("INVALID"));
        QCOMPARE(InterpretReadCard(answer("$UC12AB00700007X00001234" + userBlock7.mid(14) + "**"), panel7, 7),
                 QStringLiteral("INVALID"));

        UserRecord user;
        QVERIFY(ParseReadCardAnswer(QString::fromLatin1(good), user));
        QCOMPARE(user.id, 7);
        QCOMPARE(user.cardId, 12345);
        QCOMPARE(user.temporaryGroupDate, QDate(2016, 1, 31));
        QVERIFY(!ParseReadCardAnswer(QStringLiteral("$UC12AB007000070"), user));
    }

    void recordCountAndClock()
    {
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00700151**"), panel7), 150);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00700001**"), panel7), 0);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00700000**"), panel7), -1);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB0070A001**"), panel7), -1);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB007001**"), panel7), -1);
        QCOMPARE(InterpretRecordCount(answer("$MU12AB007O**$RC12AB00700151**"), panel7), -1);
        QCOMPARE(InterpretRecordCount(silence, panel7), -1);

        const PanelClock clock = InterpretPanelClock(answer("$UR12AB007310116090503070**"), panel7);
        QCOMPARE(clock.status, 1);
        QCOMPARE(clock.text, QStringLiteral("31/01/2016 09:05:03"));
        QCOMPARE(clock.time, QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)));
        QCOMPARE(InterpretPanelClock(answer("$DR12AB007O**0000000000000"), panel7).status, 0);
        QCOMPARE(InterpretPanelClock(answer("$UR12AB00731011609xx03070**"), panel7).status, 0);
        QCOMPARE(InterpretPanelClock(silence, panel7).status, -1);
    }

    void readerValuesAndSlots()
    {
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB007O25**"), "PR"), 25);
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB007E25**"), "PR"), -1);
        QCOMPARE(InterpretTwoDigitValue(answer("$LR12AB007O100**"), "LR"), 10);
        QCOMPARE(InterpretTwoDigitValue(answer("$LR12AB007O1x0**"), "LR"), -1);
        QCOMPARE(InterpretTwoDigitValue(silence, "LR"), -1);

        const QByteArray slotAnswer = "$ZR12AB007O7121123018451010000001010000**";
        QCOMPARE(InterpretReadSlot(answer(slotAnswer), panel7), QString::fromLatin1(slotAnswer));
        QCOMPARE(InterpretReadSlot(answer("$ZR12AB007E" + QByteArray(28, '0') + "**"), panel7),
                 QStringLiteral("ERROR"));
        QCOMPARE(InterpretReadSlot(silence, panel7), QStringLiteral("TIMEOUT"));
        ProgrammedSlot slot;
        slot.doors[4] = true;
        QVERIFY(ParseReadSlotAnswer(QString::fromLatin1(slotAnswer), slot));
        QVERIFY(slot.active);
        QCOMPARE(slot.start, QTime(12, 30));
        QCOMPARE(slot.end, QTime(18, 45));
        QCOMPARE(slot.doors, (std::array<bool, 8>{ true, false, true, false, true, false, false, false }));
        QCOMPARE(slot.relays, (std::array<bool, 8>{ false, true, false, true, false, false, false, false }));
        QVERIFY(!ParseReadSlotAnswer(QStringLiteral("$ZR12AB007O71211299"), slot));
    }

    void anotherPanelsAnswerIsNotTaken()
    {
        using namespace AnswerReading;
        const QByteArray nc = panel7.answerCode("NC");
        QCOMPARE(nc, QByteArray("NC12AB007"));
        QCOMPARE(acceptedByO(answer("$NC12AB008O**"), nc), -1);
        QCOMPARE(acceptedByO(answer("$NC12AC007O**"), nc), -1);
        QCOMPARE(acceptedByO(answer("$NC12AB008O**$NC12AB007O**"), nc), 1);
        QCOMPARE(echoedCode(answer("$EM13AB007O**"), panel7.answerCode("EM")), 0);
        QCOMPARE(codeAnywhere(answer("$TE12AB006O**"), panel7.answerCode("TE")), -1);
        QCOMPARE(InterpretRecordCount(answer("$RC12AB00800151**"), panel7), -1);
        QCOMPARE(InterpretPanelClock(answer("$UR12AB006310116090503070**"), panel7).status, 0);
        QCOMPARE(InterpretTwoDigitValue(answer("$PR12AB009O25**"), panel7.answerCode("PR")), -1);

        // A stray answer of another panel before this panel's own: its own is the one read.
        const QByteArray ours = "$UC12AB007" + userBlock7 + "**";
        const QByteArray stray = "$UC12AB008" + userBlock7 + "**";
        const QString read = InterpretReadCard(answer(stray + ours), panel7, 7);
        QCOMPARE(read, QString::fromLatin1(ours));
        QVERIFY(InterpretReadCard(answer(stray), panel7, 7) == QStringLiteral("ERROR"));
    }

    void hostileBytesGiveFailuresNotCrashes()
    {
        const QList<QByteArray> texts = hostileTexts();
        for (const QByteArray& text : texts) {
            const ExchangeResult result = answer(text);
            QVERIFY(AnswerReading::acceptedByO(result, "NC") != 1);
            QVERIFY(InterpretReadCard(result, panel7, 7).size() <= 7); // one of the failure words
            QCOMPARE(InterpretRecordCount(result, panel7), -1);
            QVERIFY(InterpretPanelClock(result, panel7).status != 1);
            QCOMPARE(InterpretTwoDigitValue(result, "PR"), -1);
            QVERIFY(InterpretReadSlot(result, panel7).size() <= 7);
            QVERIFY(AnswerReading::textField(result, "GR", 4).size() <= 5);
            UserRecord user;
            QVERIFY(!ParseReadCardAnswer(QString::fromLatin1(text), user));
            ProgrammedSlot slot;
            QVERIFY(!ParseReadSlotAnswer(QString::fromLatin1(text), slot));
        }
    }
};

QTEST_APPLESS_MAIN(AnswersTest)
#include "AnswersTest.moc"
