// kx410ctl calendars, programme and permission: what they keep, and the frames that reach a
// simulated panel, byte by byte.

#include "CliSimSite.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class CliCalendarsTest : public QObject
{
    Q_OBJECT

private slots:
    void commandsKeepTheRowsAndSendTheirFrames();
};

void CliCalendarsTest::commandsKeepTheRowsAndSendTheirFrames()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliSimSite site(cli);
    QVERIFY2(site.isStarted(), qPrintable(site.error()));
    SimPanel* panel = site.addPanel(3, 0x12AB);
    QVERIFY2(panel, qPrintable(site.error()));

    // Calendars: a date that does not exist is a command line mistake, number 9 a refusal.
    QCOMPARE(cli.runAsAdmin("calendars add Yaz --number 2 --date1 30/02/2026").exitCode, 2);
    QCOMPARE(cli.runAsAdmin("calendars add Yaz --number 9").exitCode, 1);
    QCOMPARE(cli.runAsAdmin("calendars add Vardiya --number 1 --type hours --group1 1 --time1 08:00 --group2 2 "
                            "--time2 17:00 --group3 3")
                 .exitCode,
             0);
    QCOMPARE(cli.runAsAdmin("calendars add Yaz --number 2 --date1 01/07/2026 --date2 2026-08-31 --group2 12").exitCode,
             0);
    CliRunner::Result r = cli.runAsAdmin("--yes calendars send --panel 3");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(CliSimSite::sent(panel, "CZ"),
             (QStringList{ u"%CZ12AB00310080017000000000000000000000100020003**"_s,
                           u"%CZ12AB00321000000000107202631082026000000120000**"_s }));

    // Programmed slots: a new panel's 16 slots a day, one set, sent in day and slot order.
    r = cli.run("programme show --panel 3 --day 2");
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 1 + 16);
    QCOMPARE(cli.runAsAdmin("programme set --panel 3 --day 2 --slot 17").exitCode, 2);
    QCOMPARE(cli.runAsAdmin("programme set --panel 3 --day 2 --slot 5 --active on --start 12:00 --end 13:30 "
                            "--doors 2,4 --relays all")
                 .exitCode,
             0);
    QCOMPARE(cli.runAsAdmin("--yes programme send --panel 3").exitCode, 0);
    const QStringList slotList = CliSimSite::sent(panel, "ZW");
    QCOMPARE(slotList.size(), 7 * 16);
    QCOMPARE(slotList.at(16 + 4), u"%ZW12AB0032051120013300101000011110000**"_s);
    QCOMPARE(slotList.at(0), u"%ZW12AB0031010000000000000000000000000**"_s);
    QCOMPARE(cli.runAsAdmin("--yes programme receive --panel 3").exitCode, 0);
    QCOMPARE(CliSimSite::sent(panel, "ZR").value(20), u"%ZR12AB003205**"_s);

    // Approvals of one group's members.
    QCOMPARE(cli.runAsAdmin("groups add Taşeron --number 7").exitCode, 0);
    QCOMPARE(cli.runAsAdmin("users add --id 41 --card 9041 --group 7").exitCode, 0);
    QCOMPARE(cli.runAsAdmin("users add --id 40 --card 9040 --group 7").exitCode, 0);
    QCOMPARE(cli.run("permission list --group 0").exitCode, 1);
    QCOMPARE(cli.run("permission all --group 7").exitCode, 0);
    QCOMPARE(cli.run("permission set --group 7 --user 41 --approved off").exitCode, 0);
    QCOMPARE(cli.runAsAdmin("--yes permission send --group 7 --panel 3").exitCode, 0);
    QCOMPARE(CliSimSite::sent(panel, "CS"), (QStringList{ u"%CS12AB003000401**"_s, u"%CS12AB003000410**"_s }));
    QCOMPARE(cli.runAsAdmin("permission reset --at 03:15 --to-panels on").exitCode, 0);
    QCOMPARE(cli.run("permission reset").out.trimmed(), u"reset: 03:15, to panels: on"_s);
}

QTEST_GUILESS_MAIN(CliCalendarsTest)
#include "CliCalendarsTest.moc"
