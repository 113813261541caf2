// kx410ctl calendars, programme and permission: the options they read, as printed back, and their
// sends' exit statuses (the frames are the transfers' and the frame builders' own tests).

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
    QStringList lines = cli.run("calendars list").out.split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.simplified();
    QCOMPARE(lines.mid(1),
             (QStringList{ u"1 hours 1 08:00 2 17:00 3 Vardiya"_s,
                           u"2 dates 0 01/07/2026 00:00 12 31/08/2026 00:00 0 Yaz"_s }));
    CliRunner::Result r = cli.runAsAdmin("--yes calendars send --panel 3");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(panel->requestCount("CZ"), 2);

    // Programmed slots: a new panel's 16 slots a day, one set, sent in day and slot order.
    r = cli.run("programme show --panel 3 --day 2");
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 1 + 16);
    QCOMPARE(cli.runAsAdmin("programme set --panel 3 --day 2 --slot 17").exitCode, 2);
    QCOMPARE(cli.runAsAdmin("programme set --panel 3 --day 2 --slot 5 --active on --start 12:00 --end 13:30 "
                            "--doors 2,4 --relays all")
                 .exitCode,
             0);
    QVERIFY(cli.run("programme show --panel 3 --day 2")
                .out.simplified()
                .contains(u"2 5 on 12:00 13:30 01010000 11110000"_s));
    QCOMPARE(cli.mismatch({ { "--yes programme send --panel 3", 0 }, { "--yes programme receive --panel 3", 0 } }),
             QString());

    // Approvals of one group's members.
    QCOMPARE(cli.runAsAdmin("groups add Taşeron --number 7").exitCode, 0);
    QCOMPARE(cli.runAsAdmin("users add --id 41 --card 9041 --group 7").exitCode, 0);
    QCOMPARE(cli.runAsAdmin("users add --id 40 --card 9040 --group 7").exitCode, 0);
    QCOMPARE(cli.run("permission list --group 0").exitCode, 1);
    QCOMPARE(cli.run("permission all --group 7").exitCode, 0);
    QCOMPARE(cli.run("permission set --group 7 --user 41 --approved off").exitCode, 0);
    r = cli.run("permission list --group 7");
    QVERIFY2(r.out.simplified().contains(u"40 9040 yes 41 9041 no"_s), qPrintable(r.out));
    QCOMPARE(cli.runAsAdmin("--yes permission send --group 7 --panel 3").exitCode, 0);
    QCOMPARE(panel->requestCount("CS"), 2);
    QCOMPARE(cli.runAsAdmin("permission reset --at 03:15 --to-panels on").exitCode, 0);
    QCOMPARE(cli.run("permission reset").out.trimmed(), u"reset: 03:15, to panels: on"_s);
}

QTEST_GUILESS_MAIN(CliCalendarsTest)
#include "CliCalendarsTest.moc"
