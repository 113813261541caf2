// kx410ctl zones: the global zones kept from a script with the zone window's rules. The refusals'
// texts are the zone store's tests; here the exit statuses and the language of the messages.

#include "CliRunner.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
QStringList zoneLines(const CliRunner& cli)
{
    QStringList lines = cli.run("zones list").out.split(u'\n', Qt::SkipEmptyParts);
    if (!lines.isEmpty())
        lines.removeFirst(); // the column titles
    for (QString& line : lines)
        line = line.simplified();
    return lines;
}
} // namespace

class CliZonesTest : public QObject
{
    Q_OBJECT

private slots:
    void zonesAreKeptByTheWindowsRules();
    void aZoneInUseOrNotConfirmedStays();
};

void CliZonesTest::zonesAreKeptByTheWindowsRules()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.run("zones list");
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.trimmed(), u"NUMBER  NAME"_s);

    // Changes need administrator rights.
    QCOMPARE(cli.run("zones add Bina").exitCode, 4);

    r = cli.runAsAdmin("zones add \"Ana Bina\"");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin("zones add \"O'Neil Otopark\" --number 64").out.trimmed(), u"64"_s);

    // The store's refusals end with status 1; a number that is no number is a command line mistake.
    for (const char* args :
         { "zones add Yine --number 64", "zones add Fazla --number 65", "zones rename --number 7 Yok" })
        QVERIFY2(cli.runAsAdmin(args).exitCode == 1, args);
    QCOMPARE(cli.runAsAdmin("zones add X --number beş").exitCode, 2);
    QCOMPARE(cli.runAsAdmin("zones delete").exitCode, 2);

    r = cli.runAsAdmin("zones rename --number 64 \"Kapalı Otopark\"");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(zoneLines(cli), (QStringList{ u"1 Ana Bina"_s, u"64 Kapalı Otopark"_s }));
}

void CliZonesTest::aZoneInUseOrNotConfirmedStays()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    QCOMPARE(cli.runAsAdmin("zones add Bina").exitCode, 0);
    QCOMPARE(cli.runAsAdmin("zones add Otopark").exitCode, 0);
    // A new panel maps both its local zones to zone 1.
    QCOMPARE(cli.runAsAdmin("panels add --number 3 --ip 127.0.0.1 --port 43001 --serial 1A").exitCode, 0);

    QCOMPARE(cli.runAsAdmin("--yes zones delete --number 1").exitCode, 1);
    CliRunner::Result r = cli.runAsAdmin("--lang en zones delete --number 1");
    QVERIFY2(r.err.contains(u"1 numbered global zone: it is in use and cannot be deleted!\nPanels using it: 3"_s),
             qPrintable(r.err));

    // The question needs an answer: none given, or No, keeps the zone.
    r = cli.runAsAdmin("zones delete --number 2");
    QCOMPARE(r.exitCode, 4);
    QVERIFY(r.err.contains(u"--yes"_s));
    QCOMPARE(cli.runAsAdmin("--no zones delete --number 2").exitCode, 5);
    QCOMPARE(zoneLines(cli).size(), 2);

    r = cli.runAsAdmin("--yes zones delete --number 2");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(zoneLines(cli), QStringList{ u"1 Bina"_s });
    QCOMPARE(cli.runAsAdmin("--yes zones delete --number 2").exitCode, 1);
}

QTEST_GUILESS_MAIN(CliZonesTest)
#include "CliZonesTest.moc"
