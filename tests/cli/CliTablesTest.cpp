// kx410ctl over the station's tables (zones, time groups, groups, calendars, programmed slots and
// approvals) as a script uses it: the options each command reads, as its listing prints them back,
// the exit statuses, and which panels the sends reach. The stores' refusal texts, the transfers'
// rules and the frames are those layers' own tests.

#include "CliSimSite.h"
#include "support/FaultOf.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class CliTablesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void zones();
    void timeGroups();
    void groups();
    void calendarsProgrammeAndApprovals();
    void sendsReachTheChosenPanels();

private:
    std::unique_ptr<CliRunner> m_cli;
    std::unique_ptr<CliSimSite> m_site;
    QList<SimPanel*> m_panels;
};

void CliTablesTest::init()
{
    m_cli = std::make_unique<CliRunner>();
    QVERIFY(m_cli->setUpServer());
    m_site = std::make_unique<CliSimSite>(*m_cli);
    QVERIFY2(m_site->isStarted(), qPrintable(m_site->error()));
    m_panels = { m_site->addPanel(1, 0x2A01), m_site->addPanel(2, 0x2A02) };
    QVERIFY2(!m_panels.contains(nullptr), qPrintable(m_site->error()));
}

void CliTablesTest::cleanup()
{
    m_panels.clear();
    m_site.reset();
    m_cli.reset();
}

void CliTablesTest::zones()
{
    const CliRunner& cli = *m_cli;
    CliRunner::Result r = cli.runAsAdmin("zones add \"Ana Bina\"");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin("zones add \"O'Neil Otopark\" --number 64").out.trimmed(), u"64"_s);
    QCOMPARE(cli.mismatch({ { "zones add Yine --number 64", 1 },
                            { "zones add X --number beş", 2 },
                            { "zones delete", 2 },
                            { "zones rename --number 64 \"Kapalı Otopark\"", 0 } }),
             QString());
    QCOMPARE(cli.listed("zones list").mid(1), (QStringList{ u"1 Ana Bina"_s, u"64 Kapalı Otopark"_s }));

    // The panels map their local zones to zone 1, which therefore stays.
    QCOMPARE(cli.mismatch({ { "--yes zones delete --number 1", 1 },
                            { "--yes zones delete --number 64", 0 },
                            { "--yes zones delete --number 64", 1 } }),
             QString());
    QCOMPARE(cli.listed("zones list").mid(1), QStringList{ u"1 Ana Bina"_s });
}

void CliTablesTest::timeGroups()
{
    const CliRunner& cli = *m_cli;
    CliRunner::Result r = cli.runAsAdmin("timegroups add Mesai --type 3 --start-time 08:00 --end-time 17:30");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);

    // A store's refusal ends with status 1; values the command line cannot read are its mistakes.
    QCOMPARE(cli.mismatch({ { R"(timegroups add "Hafta İçi" --number 14 --type 13 --weekdays 1,2,3,4,5 )"
                              "--day-hours 08:00-18:00,5=08:00-12:00 --extra-window 22:00-23:30",
                              0 },
                            { "timegroups add Yine --number 14", 1 },
                            { "timegroups add Son --number 16", 0 },
                            { "timegroups set --number 1 --type 7", 2 },
                            { "timegroups set --number 1 --start-date 31/02/2024", 2 },
                            { "timegroups set --number 1 --hours 1,2,25", 2 },
                            { "timegroups set --number 1 --extra-hours 9", 2 },
                            { "timegroups set --number 1 --day-hours 8=08:00-09:00", 2 },
                            // set changes only what it is given
                            { "timegroups set --number 1 --end-time 18:15", 0 },
                            { R"(timegroups set --number 16 --type 11 --hours 7,24,12 --name "Altı Saat")", 0 } }),
             QString());
    // The list prints the settings as the options that set them.
    QCOMPARE(cli.listed("timegroups list"),
             (QStringList{ u"NUMBER TYPE NAME"_s, u"1 3 Mesai"_s, u"--start-time 08:00 --end-time 18:15"_s,
                           u"14 13 Hafta İçi"_s,
                           u"--weekdays 1,2,3,4,5 --day-hours 1=08:00-18:00,2=08:00-18:00,3=08:00-18:00,"
                           "4=08:00-18:00,5=08:00-12:00,6=08:00-18:00,7=08:00-18:00 --extra-window 22:00-23:30"_s,
                           u"16 11 Altı Saat"_s, u"--hours 7,0,12,0,0,0"_s }));
    QCOMPARE(
        cli.mismatch({ { "--yes timegroups delete --number 14", 0 }, { "--yes timegroups delete --number 14", 1 } }),
        QString());
}

void CliTablesTest::groups()
{
    const CliRunner& cli = *m_cli;
    CliRunner::Result r = cli.runAsAdmin("groups add Ofis --access-count 300 --anti-passback-off on");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);

    // A store's refusal ends with 1, option mistakes with 2, each saying what was wrong.
    const QList<std::tuple<const char*, int, QString>> refused = {
        { "add Yine --number 1", 1, QString() },
        { "add Sıfır --number 0", 2, QString() },
        { "doors 1 --panel 3 --doors 1000", 1, u"Panel veritabanında bulunamadı."_s },
        { "doors 1 --panel 1 --doors 12", 2, u"--doors"_s },
        { "set --number 1 --daily-approval maybe", 2, u"--daily-approval"_s },
    };
    for (const auto& [args, code, text] : refused) {
        r = cli.runAsAdmin(QStringList{ u"groups"_s } + CliRunner::words(args));
        QVERIFY2(r.exitCode == code, qPrintable(QString::fromUtf8(args) + u" -> "_s + r.all()));
        QVERIFY2(!r.err.isEmpty() && r.err.contains(text), qPrintable(r.err));
    }

    QCOMPARE(cli.mismatch({ { "groups add Son --number 1280", 0 },
                            { "--yes groups delete --number 1280", 0 },
                            { R"(groups set --number 1 --name "Ofis B" --access-count-zone 99 --inside-count 9999 )"
                              "--inside-count-zone 100 --anti-passback-off off --repeat-block-off on",
                              0 },
                            { "groups add Depo --number 40 --daily-approval on --clear-inside-at-night on", 0 },
                            { "groups doors 1 --panel 1 --doors 1100 --time-groups 1,1,0,0 --zones 1,1,1,1", 0 },
                            { "groups doors 40 --panel 2 --doors 0011 --time-groups 0,0,12,3", 0 } }),
             QString());
    QCOMPARE(cli.listed("groups list"),
             (QStringList{ u"NUMBER NAME"_s, u"1 Ofis B"_s,
                           u"--access-count 300 --access-count-zone 99 --inside-count 9999 --inside-count-zone 100 "
                           "--repeat-block-off on"_s,
                           u"--panel 1 --doors 1100 --time-groups 1,1,0,0 --zones 1,1,1,1"_s, u"40 Depo"_s,
                           u"--daily-approval on --clear-inside-at-night on"_s,
                           u"--panel 2 --doors 0011 --time-groups 0,0,12,3 --zones 1,1,1,1"_s }));
}

void CliTablesTest::calendarsProgrammeAndApprovals()
{
    const CliRunner& cli = *m_cli;
    // Calendars: a date that does not exist is a command line mistake, number 9 a refusal.
    QCOMPARE(cli.mismatch({ { "calendars add Yaz --number 2 --date1 30/02/2026", 2 },
                            { "calendars add Yaz --number 9", 1 },
                            { "calendars add Vardiya --number 1 --type hours --group1 1 --time1 08:00 --group2 2 "
                              "--time2 17:00 --group3 3",
                              0 },
                            { "calendars add Yaz --number 2 --date1 01/07/2026 --date2 2026-08-31 --group2 12", 0 } }),
             QString());
    QCOMPARE(cli.listed("calendars list").mid(1),
             (QStringList{ u"1 hours 1 08:00 2 17:00 3 Vardiya"_s,
                           u"2 dates 0 01/07/2026 00:00 12 31/08/2026 00:00 0 Yaz"_s }));

    // Programmed slots: a new panel's 16 slots a day, one of them set.
    QCOMPARE(cli.listed("programme show --panel 1 --day 2").size(), 1 + 16);
    QCOMPARE(cli.mismatch({ { "programme set --panel 1 --day 2 --slot 17", 2 },
                            { "programme set --panel 1 --day 2 --slot 5 --active on --start 12:00 --end 13:30 "
                              "--doors 2,4 --relays all",
                              0 } }),
             QString());
    QCOMPARE(cli.listed("programme show --panel 1 --day 2").value(5), u"2 5 on 12:00 13:30 01010000 11110000"_s);

    // Approvals of one group's members, and when they fall back.
    QCOMPARE(cli.mismatch({ { "groups add Taşeron --number 7", 0 },
                            { "users add --id 41 --card 9041 --group 7", 0 },
                            { "users add --id 40 --card 9040 --group 7", 0 },
                            { "permission list --group 0", 1, false },
                            { "permission all --group 7", 0, false },
                            { "permission set --group 7 --user 41 --approved off", 0, false },
                            { "permission reset --at 03:15 --to-panels on", 0 } }),
             QString());
    QCOMPARE(cli.listed("permission list --group 7").mid(1), (QStringList{ u"40 9040 yes"_s, u"41 9041 no"_s }));
    QCOMPARE(cli.run("permission reset").out.trimmed(), u"reset: 03:15, to panels: on"_s);
}

void CliTablesTest::sendsReachTheChosenPanels()
{
    const CliRunner& cli = *m_cli;
    SimPanel* one = m_panels.at(0);
    SimPanel* two = m_panels.at(1);
    // Nothing to send: nothing reaches a panel.
    QCOMPARE(cli.mismatch({ { "--yes timegroups send --all-panels", 1 }, { "--yes groups send --panel 1", 1 } }),
             QString());
    QCOMPARE(one->totalRequests(), 0);

    QCOMPARE(cli.mismatch({ { "timegroups add Mesai --type 3 --start-time 08:00 --end-time 17:30", 0 },
                            { "groups add Ofis", 0 },
                            { "groups add Depo --number 40", 0 },
                            { "calendars add Vardiya --number 1 --type hours --group1 1 --time1 08:00", 0 },
                            { "groups add Taşeron --number 7", 0 },
                            { "users add --id 41 --card 9041 --group 7", 0 },
                            { "programme set --panel 1 --day 2 --slot 5 --active on --start 12:00 --end 13:30", 0 },
                            { "--yes timegroups send --panel 1", 0 },
                            { "--yes groups send --panel 1", 0 },
                            { "--yes calendars send --panel 1", 0 },
                            { "--yes programme send --panel 1", 0 },
                            { "--yes programme receive --panel 1", 0 },
                            { "--yes permission send --group 7 --panel 1", 0 } }),
             QString());
    one->inspect([](const SimPanelState& s) {
        QCOMPARE(s.timeGroups.size(), 1);
        QCOMPARE(s.groups.size(), 3);
    });
    QCOMPARE(one->requestCount("CS"), 1);
    QCOMPARE(two->totalRequests(), 0);

    // Without connecting: panel 1 holds what was sent, panel 2 nothing yet; an edit shows on both.
    CliRunner::Result r = cli.run("groups send --dry-run");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"panel 1: "_s) && r.out.contains(u"; same as the last send"_s), qPrintable(r.out));
    QVERIFY(r.out.contains(u"all would be new to the panel"_s));
    QCOMPARE(cli.runAsAdmin("groups set --number 1 --access-count 5").exitCode, 0);
    QVERIFY2(cli.run("groups send --dry-run").out.contains(u"; differs from the last send"_s), "no difference");
    QCOMPARE(two->totalRequests(), 0);

    // A panel that does not take one group: the exit says it was not all. Erasing works on one
    // panel only.
    two->setFault(faultOf(SimFault::Mode::Refuse, "TN", 1));
    QCOMPARE(cli.mismatch({ { "--yes groups send --all-panels", 1 },
                            { "--yes timegroups send --all-panels", 0 },
                            { "--yes groups erase --all-panels", 2 },
                            { "--yes timegroups erase --all-panels", 2 },
                            { "--yes groups erase --panel 1", 0 },
                            { "--yes timegroups erase --panel 2", 0 } }),
             QString());
    one->inspect([](const SimPanelState& s) {
        QVERIFY(s.groups.isEmpty());
        QCOMPARE(s.timeGroups.size(), 1);
    });
    two->inspect([](const SimPanelState& s) { QVERIFY(s.timeGroups.isEmpty()); });
}

QTEST_GUILESS_MAIN(CliTablesTest)
#include "CliTablesTest.moc"
