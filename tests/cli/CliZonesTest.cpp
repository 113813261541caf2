// kx410ctl zones: the global zones kept from a script with the zone window's rules. The refusals'
// texts are the zone store's tests; here the exit statuses and what is printed.

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

    r = cli.runAsAdmin("zones add \"Ana Bina\"");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin("zones add \"O'Neil Otopark\" --number 64").out.trimmed(), u"64"_s);

    // The store's refusals end with status 1; a number that is no number is a command line mistake.
    QCOMPARE(
        cli.mismatch({ { "zones add Yine --number 64", 1 }, { "zones add X --number beş", 2 }, { "zones delete", 2 } }),
        QString());

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
    CliRunner::Result r = cli.runAsAdmin("--yes zones delete --number 2");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(zoneLines(cli), QStringList{ u"1 Bina"_s });
    QCOMPARE(cli.runAsAdmin("--yes zones delete --number 2").exitCode, 1);
}

QTEST_GUILESS_MAIN(CliZonesTest)
#include "CliZonesTest.moc"
