// kx410ctl timegroups: time groups kept with the page's rules and texts, and the frames that reach
// simulated panels for the stored rows, byte by byte.

#include "CliRunner.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
QStringList timeGroups(const QStringList& args)
{
    return QStringList{ u"timegroups"_s } + args;
}

QString zeros(int count)
{
    return QString(count, u'0');
}
} // namespace

class CliTimeGroupsTest : public QObject
{
    Q_OBJECT

private slots:
    void timeGroupsAreKeptByThePagesRules();
    void sendWritesEachStoredRowAsItsFrame();
};

void CliTimeGroupsTest::timeGroupsAreKeptByThePagesRules()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.run(timeGroups({ u"list"_s }));
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.trimmed(), u"NUMBER  TYPE  NAME"_s);

    QCOMPARE(cli.run(timeGroups({ u"add"_s, u"Mesai"_s })).exitCode, 4);

    r = cli.runAsAdmin(timeGroups(
        { u"add"_s, u"Mesai"_s, u"--type"_s, u"3"_s, u"--start-time"_s, u"08:00"_s, u"--end-time"_s, u"17:30"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    r = cli.runAsAdmin(timeGroups({ u"add"_s, u"Hafta İçi"_s, u"--number"_s, u"14"_s, u"--type"_s, u"13"_s,
                                    u"--weekdays"_s, u"1,2,3,4,5"_s, u"--day-hours"_s, u"08:00-18:00,5=08:00-12:00"_s,
                                    u"--extra-window"_s, u"22:00-23:30"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));

    // The store's refusals (their texts are the time group store's own tests) end with status 1;
    // values the command line cannot read are its mistakes (status 2). 16 is the last number.
    for (const auto& [args, status] :
         QList<std::pair<QStringList, int>>{ { { u"add"_s, u"Yine"_s, u"--number"_s, u"14"_s }, 1 },
                                             { { u"add"_s, u"Fazla"_s, u"--number"_s, u"17"_s }, 1 },
                                             { { u"set"_s, u"--number"_s, u"7"_s, u"--name"_s, u"Yok"_s }, 1 },
                                             { { u"add"_s, u"Son"_s, u"--number"_s, u"16"_s }, 0 },
                                             { { u"add"_s, u"Fazla"_s }, 1 } })
        QCOMPARE(cli.runAsAdmin(timeGroups(args)).exitCode, status);
    for (const QStringList& bad : QList<QStringList>{ { u"--type"_s, u"7"_s },
                                                      { u"--start-date"_s, u"31/02/2024"_s },
                                                      { u"--hours"_s, u"1,2,25"_s },
                                                      { u"--extra-hours"_s, u"9"_s },
                                                      { u"--day-hours"_s, u"8=08:00-09:00"_s } })
        QCOMPARE(cli.runAsAdmin(timeGroups(QStringList{ u"set"_s, u"--number"_s, u"1"_s } + bad)).exitCode, 2);

    // set changes only what it is given; the list prints the settings as the options that set them.
    r = cli.runAsAdmin(timeGroups({ u"set"_s, u"--number"_s, u"1"_s, u"--end-time"_s, u"18:15"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = cli.runAsAdmin(timeGroups({ u"set"_s, u"--number"_s, u"16"_s, u"--type"_s, u"11"_s, u"--hours"_s, u"7,24,12"_s,
                                    u"--name"_s, u"Altı Saat"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QStringList lines = cli.run(timeGroups({ u"list"_s })).out.split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.simplified();
    QCOMPARE(lines,
             (QStringList{ u"NUMBER TYPE NAME"_s, u"1 3 Mesai"_s, u"--start-time 08:00 --end-time 18:15"_s,
                           u"14 13 Hafta İçi"_s,
                           u"--weekdays 1,2,3,4,5 --day-hours 1=08:00-18:00,2=08:00-18:00,3=08:00-18:00,"
                           "4=08:00-18:00,5=08:00-12:00,6=08:00-18:00,7=08:00-18:00 --extra-window 22:00-23:30"_s,
                           u"16 11 Altı Saat"_s, u"--hours 7,0,12,0,0,0"_s }));

    // Deleting asks first.
    QCOMPARE(cli.runAsAdmin(timeGroups({ u"delete"_s, u"--number"_s, u"14"_s })).exitCode, 4);
    QCOMPARE(cli.runAsAdmin({ u"--no"_s, u"timegroups"_s, u"delete"_s, u"--number"_s, u"14"_s }).exitCode, 5);
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"delete"_s, u"--number"_s, u"14"_s }).exitCode, 0);
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"delete"_s, u"--number"_s, u"14"_s }).exitCode, 1);
    QVERIFY(!cli.run(timeGroups({ u"list"_s })).out.contains(u"Hafta"_s));
}

void CliTimeGroupsTest::sendWritesEachStoredRowAsItsFrame()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    SimulatorHost sim;
    SimulatorHost::Options options;
    options.statusPort = 0;
    options.searchPort = 0;
    QString error;
    QVERIFY2(sim.start(options, &error), qPrintable(error));
    QList<SimPanel*> panels;
    for (const int number : { 1, 2 }) {
        SimPanelConfig config;
        config.number = number;
        config.serial = 0x2A00 + number;
        SimPanel* panel = sim.addPanel(config);
        QVERIFY(panel);
        panels << panel;
        const CliRunner::Result r = cli.runAsAdmin(
            { u"panels"_s, u"add"_s, u"--number"_s, QString::number(number), u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
              QString::number(panel->port()), u"--serial"_s, QString::number(config.serial, 16) });
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    }

    // No time groups: nothing reaches a panel.
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"send"_s, u"--all-panels"_s }).exitCode, 1);
    QCOMPARE(panels.at(0)->totalRequests(), 0);

    const QList<QStringList> adds = {
        { u"Mesai"_s, u"--type"_s, u"3"_s, u"--start-time"_s, u"08:00"_s, u"--end-time"_s, u"17:30"_s },
        { u"Hafta"_s, u"--type"_s, u"6"_s, u"--weekdays"_s, u"1,2,3,4,5"_s, u"--day-hours"_s,
          u"08:00-18:00,5=08:00-12:00"_s },
        { u"Yemek"_s, u"--number"_s, u"10"_s, u"--type"_s, u"10"_s, u"--times"_s, u"11:30,12:30"_s, u"--extra-hours"_s,
          u"2"_s },
        { u"Tarih"_s, u"--number"_s, u"12"_s, u"--type"_s, u"2"_s, u"--start-date"_s, u"01/07/2024"_s, u"--end-date"_s,
          u"31/08/2024"_s },
    };
    CliRunner::Result r;
    for (const QStringList& add : adds) {
        r = cli.runAsAdmin(timeGroups(QStringList{ u"add"_s } + add));
        QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    }
    // Head, number, type, the twelve of the basic area, the 105 of the weekday and month plans.
    const QString head = u"%NG2A01001"_s;
    const QString day = u"08001800"_s;
    const QStringList expected = {
        head + u"01"_s + u"03"_s + u"0800"_s + u"1730"_s + u"0000"_s + zeros(105) + u"**"_s,
        head + u"02"_s + u"06"_s + zeros(12) + u"1111100"_s + day + day + day + day + u"08001200"_s + day + day
            + zeros(31) + u"0"_s + zeros(8) + u"1"_s + u"1"_s + u"**"_s,
        head + u"10"_s + u"10"_s + u"1130"_s + u"1230"_s + u"0000"_s + zeros(103) + u"2"_s + u"1"_s + u"**"_s,
        head + u"12"_s + u"02"_s + u"010724"_s + u"310824"_s + zeros(105) + u"**"_s,
    };

    r = cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"send"_s, u"--panel"_s, u"1"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QStringList frames;
    for (const QByteArray& frame : panels.at(0)->recentRequests())
        frames << QString::fromLatin1(frame);
    QCOMPARE(frames, expected);
    QCOMPARE(panels.at(1)->totalRequests(), 0);

    // All panels (each erased first, as the transfer's own tests check).
    r = cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"send"_s, u"--all-panels"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(panels.at(1)->requestCount("NG"), 4);

    // Erasing works on one panel only.
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"erase"_s, u"--all-panels"_s }).exitCode, 2);
    QCOMPARE(cli.runAsAdmin({ u"timegroups"_s, u"erase"_s, u"--panel"_s, u"2"_s }).exitCode, 4);
    r = cli.runAsAdmin({ u"--yes"_s, u"timegroups"_s, u"erase"_s, u"--panel"_s, u"2"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    panels.at(1)->inspect([](const SimPanelState& s) { QVERIFY(s.timeGroups.isEmpty()); });
    panels.at(0)->inspect([](const SimPanelState& s) { QCOMPARE(s.timeGroups.size(), 4); });
}

QTEST_GUILESS_MAIN(CliTimeGroupsTest)
#include "CliTimeGroupsTest.moc"
