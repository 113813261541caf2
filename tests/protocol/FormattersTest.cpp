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
        // Out of 0..255 the number goes unpadded, whatever its length.
        QCOMPARE(FormatDec3(1000), QByteArray("1000"));

        QCOMPARE(FormatHex2(255), QByteArray("FF"));
        QCOMPARE(FormatHex2(256), QByteArray("00"));
        QCOMPARE(FormatHex2(-1), QByteArray("00"));

        QCOMPARE(FormatHex4(65535), QByteArray("FFFF"));
        QCOMPARE(FormatHex4(65536), QByteArray("0000"));
    }

    void paddingCutsFromTheRight()
    {
        // (An over-long number keeping its leftmost digits is checked on the user block.)
        QCOMPARE(PadDigits(-4, 3), QByteArray("000"));
        QCOMPARE(PadDigits(4294967295LL, 10), QByteArray("4294967295"));

        QCOMPARE(PadText("AB", 5), QByteArray("AB   "));
        QCOMPARE(PadText("ABCDEFG", 3), QByteArray("ABC"));
        QCOMPARE(PadText("ABC", 0), QByteArray());
    }

    void frameSafeTextFoldsTurkishAndHidesMarkers()
    {
        QCOMPARE(FrameSafeText(QStringLiteral(u"A$B%C*D\tE€")), QByteArray("A_B_C_D_E_"));
    }

    void headCarriesSerialHighByteFirst()
    {
        // The head of every frame kind is compared whole with its frame.
        QCOMPARE(PanelAddress(64, 0x00FF).head("EM"), QByteArray("%EM00FF064"));
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
