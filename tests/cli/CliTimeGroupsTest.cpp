// kx410ctl timegroups: time groups kept with the page's rules, and the panels their sends reach
// (the frames are the transfer's and the frame builders' own tests).

#include "CliSimSite.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class CliTimeGroupsTest : public QObject
{
    Q_OBJECT

private slots:
    void timeGroupsAreKeptByThePagesRules();
    void sendReachesTheChosenPanels();
};

void CliTimeGroupsTest::timeGroupsAreKeptByThePagesRules()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.run("timegroups list");
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.trimmed(), u"NUMBER  TYPE  NAME"_s);

    r = cli.runAsAdmin("timegroups add Mesai --type 3 --start-time 08:00 --end-time 17:30");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    r = cli.runAsAdmin(R"(timegroups add "Hafta İçi" --number 14 --type 13 --weekdays 1,2,3,4,5 )"
                       "--day-hours 08:00-18:00,5=08:00-12:00 --extra-window 22:00-23:30");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));

    // The store's refusals (their texts are the time group store's own tests) end with status 1;
    // values the command line cannot read are its mistakes (status 2). 16 is the last number.
    for (const auto& [args, status] :
         QList<std::pair<const char*, int>>{ { "add Yine --number 14", 1 },
                                             { "add Fazla --number 17", 1 },
                                             { "set --number 7 --name Yok", 1 },
                                             { "add Son --number 16", 0 },
                                             { "add Fazla", 1 },
                                             { "set --number 1 --type 7", 2 },
                                             { "set --number 1 --start-date 31/02/2024", 2 },
                                             { "set --number 1 --hours 1,2,25", 2 },
                                             { "set --number 1 --extra-hours 9", 2 },
                                             { "set --number 1 --day-hours 8=08:00-09:00", 2 } })
        QVERIFY2(cli.runAsAdmin(QStringList{ u"timegroups"_s } + CliRunner::words(args)).exitCode == status, args);

    // set changes only what it is given; the list prints the settings as the options that set them.
    r = cli.runAsAdmin("timegroups set --number 1 --end-time 18:15");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = cli.runAsAdmin(R"(timegroups set --number 16 --type 11 --hours 7,24,12 --name "Altı Saat")");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QStringList lines = cli.run("timegroups list").out.split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.simplified();
    QCOMPARE(lines,
             (QStringList{ u"NUMBER TYPE NAME"_s, u"1 3 Mesai"_s, u"--start-time 08:00 --end-time 18:15"_s,
                           u"14 13 Hafta İçi"_s,
                           u"--weekdays 1,2,3,4,5 --day-hours 1=08:00-18:00,2=08:00-18:00,3=08:00-18:00,"
                           "4=08:00-18:00,5=08:00-12:00,6=08:00-18:00,7=08:00-18:00 --extra-window 22:00-23:30"_s,
                           u"16 11 Altı Saat"_s, u"--hours 7,0,12,0,0,0"_s }));

    QCOMPARE(
        cli.mismatch({ { "--yes timegroups delete --number 14", 0 }, { "--yes timegroups delete --number 14", 1 } }),
        QString());
    QVERIFY(!cli.run("timegroups list").out.contains(u"Hafta"_s));
}

void CliTimeGroupsTest::sendReachesTheChosenPanels()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliSimSite site(cli);
    QVERIFY2(site.isStarted(), qPrintable(site.error()));
    const QList<SimPanel*> panels{ site.addPanel(1, 0x2A01), site.addPanel(2, 0x2A02) };
    QVERIFY2(!panels.contains(nullptr), qPrintable(site.error()));

    // No time groups: nothing reaches a panel.
    QCOMPARE(cli.runAsAdmin("--yes timegroups send --all-panels").exitCode, 1);
    QCOMPARE(panels.at(0)->totalRequests(), 0);

    CliRunner::Result r = cli.runAsAdmin("timegroups add Mesai --type 3 --start-time 08:00 --end-time 17:30");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = cli.runAsAdmin("--yes timegroups send --panel 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(panels.at(0)->requestCount("NG"), 1);
    QCOMPARE(panels.at(1)->totalRequests(), 0);

    // Erasing works on one panel only.
    QCOMPARE(cli.mismatch({ { "--yes timegroups send --all-panels", 0 },
                            { "--yes timegroups erase --all-panels", 2 },
                            { "--yes timegroups erase --panel 2", 0 } }),
             QString());
    panels.at(1)->inspect([](const SimPanelState& s) { QVERIFY(s.timeGroups.isEmpty()); });
    panels.at(0)->inspect([](const SimPanelState& s) { QCOMPARE(s.timeGroups.size(), 1); });
}

QTEST_GUILESS_MAIN(CliTimeGroupsTest)
#include "CliTimeGroupsTest.moc"
