#include "protocol/Formatters.h"

#include "protocol/CommandCatalogue.h"
#include "protocol/PanelAddress.h"

#include <QSet>
#include <QTest>

class FormattersTest : public QObject
{
    Q_OBJECT

private slots:
    void decimalAndHexKeepTheirQuirks()
    {
        QCOMPARE(FormatDec3(7), QByteArray("007"));
        QCOMPARE(FormatDec3(42), QByteArray("042"));
        QCOMPARE(FormatDec3(255), QByteArray("255"));
        // Out of 0..255 the number goes unpadded, whatever its length.
        QCOMPARE(FormatDec3(300), QByteArray("300"));
        QCOMPARE(FormatDec3(1000), QByteArray("1000"));
        QCOMPARE(FormatDec3(-5), QByteArray("-5"));

        QCOMPARE(FormatHex2(10), QByteArray("0A"));
        QCOMPARE(FormatHex2(255), QByteArray("FF"));
        QCOMPARE(FormatHex2(256), QByteArray("00"));
        QCOMPARE(FormatHex2(-1), QByteArray("00"));

        QCOMPARE(FormatHex4(10), QByteArray("000A"));
        QCOMPARE(FormatHex4(4095), QByteArray("0FFF"));
        QCOMPARE(FormatHex4(65535), QByteArray("FFFF"));
        QCOMPARE(FormatHex4(65536), QByteArray("0000"));
        QCOMPARE(FormatHex4(-1), QByteArray("0000"));
    }

    void paddingCutsFromTheRight()
    {
        QCOMPARE(PadNumber(12, 5), QByteArray("00012"));
        QCOMPARE(PadNumber(12345, 5), QByteArray("12345"));
        // An over-long number keeps its leftmost digits, so 123456 becomes 12345, not 23456.
        QCOMPARE(PadLongNumber(123456, 5), QByteArray("12345"));
        QCOMPARE(PadLongNumber(12345, 10), QByteArray("0000012345"));
        QCOMPARE(PadDigits(-4, 3), QByteArray("000"));
        QCOMPARE(PadDigits(4294967295LL, 10), QByteArray("4294967295"));

        QCOMPARE(PadText("AB", 5), QByteArray("AB   "));
        QCOMPARE(PadText("ABCDEFG", 3), QByteArray("ABC"));
        QCOMPARE(PadText("ABC", 0), QByteArray());
    }

    void padText4CountsTheUntrimmedLength()
    {
        QCOMPARE(PadText4(""), QByteArray("0000"));
        QCOMPARE(PadText4("7"), QByteArray("0007"));
        QCOMPARE(PadText4("AB"), QByteArray("00AB"));
        // Two characters before trimming: two zeros in front of the one that is left.
        QCOMPARE(PadText4(" 7"), QByteArray("007"));
        QCOMPARE(PadText4("1234"), QByteArray("1234"));
        QCOMPARE(PadText4("12345"), QByteArray("0000"));
    }

    void frameSafeTextFoldsTurkishAndHidesMarkers()
    {
        QCOMPARE(FrameSafeText(QStringLiteral(u"Kapı Çıkış")), QByteArray("Kapi Cikis"));
        QCOMPARE(FrameSafeText(QStringLiteral(u"A$B%C*D\tE€")), QByteArray("A_B_C_D_E_"));
    }

    void headCarriesSerialHighByteFirst()
    {
        QCOMPARE(PanelAddress(7, 0x12AB).head("NC"), QByteArray("%NC12AB007"));
        QCOMPARE(PanelAddress(64, 0x00FF).head("EM"), QByteArray("%EM00FF064"));
        QCOMPARE(PanelAddress(7, 0x12AB).request("RC"), QByteArray("%RC12AB007**\r"));
        QCOMPARE(PanelAddress(7, 0x000A).serialText(), QByteArray("000A"));
    }

    void catalogueIsOneConsistentList()
    {
        QSet<QByteArray> codes;
        for (const CommandInfo& entry : CommandCatalogue::all()) {
            // info() indexes by the enum; a line out of place would answer for another command.
            QCOMPARE(&CommandCatalogue::info(entry.command), &entry);
            QCOMPARE(qstrlen(entry.code), 2u);
            QVERIFY2(!codes.contains(entry.code), entry.code);
            codes.insert(entry.code);
            QVERIFY(entry.timeoutMs >= 1000);
            QVERIFY(entry.attempts >= 1);
        }
        QCOMPARE(CommandCatalogue::all().size(), static_cast<qsizetype>(PanelCommand::DoorForceClose) + 1);
        QCOMPARE(CommandCatalogue::info(PanelCommand::NewCard).attempts, 3);
    }
};

QTEST_APPLESS_MAIN(FormattersTest)
#include "FormattersTest.moc"
