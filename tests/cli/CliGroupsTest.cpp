// kx410ctl groups: groups kept with the page's rules and texts, doors set per panel, and the
// frames that reach simulated panels for the stored rows, byte by byte.

#include "CliRunner.h"
#include "sim/SimFault.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
QStringList groups(const QStringList& args)
{
    return QStringList{ u"groups"_s } + args;
}

QStringList simplifiedLines(const QString& text)
{
    QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.simplified();
    return lines;
}
} // namespace

class CliGroupsTest : public QObject
{
    Q_OBJECT

private slots:
    void groupsAreKeptByThePagesRules();
    void sendWritesEachStoredRowAsItsFrame();
};

void CliGroupsTest::groupsAreKeptByThePagesRules()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.run(groups({ u"add"_s, u"Ofis"_s }));
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s), qPrintable(r.err));

    r = cli.runAsAdmin(
        groups({ u"add"_s, u"Ofis"_s, u"--access-count"_s, u"300"_s, u"--anti-passback-off"_s, u"on"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin(groups({ u"add"_s, u"Son"_s, u"--number"_s, u"1280"_s })).exitCode, 0);

    // The store's refusals (their texts are the store's test) end with 1, option mistakes with 2.
    const QList<std::tuple<QStringList, int, QString>> refused = {
        { { u"add"_s, u"Yine"_s, u"--number"_s, u"1"_s }, 1, QString() },
        { { u"add"_s, u"Fazla"_s }, 1, QString() },
        { { u"add"_s, u"Sıfır"_s, u"--number"_s, u"0"_s }, 2, QString() },
        { { u"set"_s, u"--number"_s, u"7"_s, u"--name"_s, u"Yok"_s }, 1, QString() },
        { { u"doors"_s, u"1"_s, u"--panel"_s, u"3"_s, u"--doors"_s, u"1000"_s },
          1,
          u"Panel veritabanında bulunamadı."_s },
        { { u"doors"_s, u"1"_s, u"--panel"_s, u"3"_s, u"--doors"_s, u"12"_s }, 2, u"--doors"_s },
        { { u"set"_s, u"--number"_s, u"1"_s, u"--daily-approval"_s, u"maybe"_s }, 2, u"--daily-approval"_s },
    };
    for (const auto& [args, code, text] : refused) {
        r = cli.runAsAdmin(groups(args));
        QVERIFY2(r.exitCode == code, qPrintable(args.join(u' ') + u" -> "_s + r.all()));
        QVERIFY2(!r.err.isEmpty() && r.err.contains(text), qPrintable(r.err));
    }

    // Deleting asks first: without an answer given it stops.
    QCOMPARE(cli.runAsAdmin(groups({ u"delete"_s, u"--number"_s, u"1280"_s })).exitCode, 4);
    QCOMPARE(cli.runAsAdmin({ u"--no"_s, u"groups"_s, u"delete"_s, u"--number"_s, u"1280"_s }).exitCode, 5);
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"groups"_s, u"delete"_s, u"--number"_s, u"1280"_s }).exitCode, 0);

    r = cli.runAsAdmin(groups({ u"set"_s, u"--number"_s, u"1"_s, u"--name"_s, u"Ofis B"_s, u"--inside-count-zone"_s,
                                u"100"_s, u"--anti-passback-off"_s, u"off"_s, u"--daily-approval"_s, u"on"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(simplifiedLines(cli.run(groups({ u"list"_s })).out),
             (QStringList{ u"NUMBER NAME"_s, u"1 Ofis B"_s,
                           u"--access-count 300 --inside-count-zone 100 --daily-approval on"_s }));
}

void CliGroupsTest::sendWritesEachStoredRowAsItsFrame()
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

    // No groups: nothing reaches a panel.
    CliRunner::Result r = cli.runAsAdmin({ u"--yes"_s, u"groups"_s, u"send"_s, u"--panel"_s, u"1"_s });
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(panels.at(0)->totalRequests(), 0);

    const QList<QStringList> steps = {
        { u"add"_s, u"Ofis"_s, u"--access-count"_s, u"300"_s, u"--access-count-zone"_s, u"99"_s, u"--inside-count"_s,
          u"9999"_s, u"--inside-count-zone"_s, u"0"_s, u"--repeat-block-off"_s, u"on"_s },
        { u"add"_s, u"Depo"_s, u"--number"_s, u"40"_s, u"--daily-approval"_s, u"on"_s, u"--clear-inside-at-night"_s,
          u"on"_s },
        { u"doors"_s, u"1"_s, u"--panel"_s, u"1"_s, u"--doors"_s, u"1100"_s, u"--time-groups"_s, u"1,1,0,0"_s,
          u"--zones"_s, u"1,1,1,1"_s },
        { u"doors"_s, u"40"_s, u"--panel"_s, u"2"_s, u"--doors"_s, u"0011"_s, u"--time-groups"_s, u"0,0,12,3"_s },
    };
    for (const QStringList& step : steps) {
        r = cli.runAsAdmin(groups(step));
        QVERIFY2(r.exitCode == 0, qPrintable(step.join(u' ') + u" -> "_s + r.all()));
    }
    QCOMPARE(simplifiedLines(cli.run(groups({ u"list"_s })).out),
             (QStringList{ u"NUMBER NAME"_s, u"1 Ofis"_s,
                           u"--access-count 300 --access-count-zone 99 --inside-count 9999 --inside-count-zone 0 "
                           "--repeat-block-off on"_s,
                           u"--panel 1 --doors 1100 --time-groups 1,1,0,0 --zones 1,1,1,1"_s, u"40 Depo"_s,
                           u"--daily-approval on --clear-inside-at-night on"_s,
                           u"--panel 2 --doors 0011 --time-groups 0,0,12,3 --zones 1,1,1,1"_s }));

    // Head, group, door time groups, passages and zone, inside and zone, daily approval, doors,
    // reserved, the other four switches.
    const auto expected = [](int panel) {
        const QString head = u"%TN2A0"_s + QString::number(panel) + u"00"_s + QString::number(panel);
        return QStringList{
            head + u"0001"_s + (panel == 1 ? u"001001000000"_s : u"000000000000"_s) + u"000"_s + u"99"_s + u"9999"_s
                + u"01"_s + u"0"_s + (panel == 1 ? u"1100"_s : u"0000"_s) + u"0000"_s + u"1000"_s + u"**"_s,
            head + u"0040"_s + (panel == 2 ? u"000000012003"_s : u"000000000000"_s) + u"000"_s + u"01"_s + u"0000"_s
                + u"01"_s + u"1"_s + (panel == 2 ? u"0011"_s : u"0000"_s) + u"0000"_s + u"0010"_s + u"**"_s,
        };
    };
    const auto sent = [](const SimPanel* panel) {
        QStringList frames;
        for (const QByteArray& frame : panel->recentRequests())
            frames << QString::fromLatin1(frame);
        return frames;
    };
    r = cli.runAsAdmin({ u"--yes"_s, u"groups"_s, u"send"_s, u"--panel"_s, u"1"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(sent(panels.at(0)), expected(1));
    QCOMPARE(panels.at(1)->totalRequests(), 0);
    // Without connecting: panel 1 holds what was sent, panel 2 nothing yet; an edit shows on both.
    r = cli.run({ u"groups"_s, u"send"_s, u"--dry-run"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"panel 1: "_s) && r.out.contains(u"; same as the last send"_s), qPrintable(r.out));
    QVERIFY(r.out.contains(u"all would be new to the panel"_s));
    QCOMPARE(cli.runAsAdmin(groups({ u"set"_s, u"--number"_s, u"1"_s, u"--access-count"_s, u"5"_s })).exitCode, 0);
    r = cli.run({ u"groups"_s, u"send"_s, u"--dry-run"_s });
    QVERIFY2(r.out.contains(u"; differs from the last send"_s), qPrintable(r.out));
    QCOMPARE(panels.at(0)->totalRequests(), int(expected(1).size()));
    QCOMPARE(cli.runAsAdmin(groups({ u"set"_s, u"--number"_s, u"1"_s, u"--access-count"_s, u"300"_s })).exitCode, 0);

    // A panel that does not take one group: the rest goes on, and the exit says it was not all.
    panels.at(0)->resetRequestCounts();
    SimFault refuse;
    refuse.mode = SimFault::Mode::Refuse;
    refuse.codes = { "TN" };
    refuse.remaining = 1;
    panels.at(1)->setFault(refuse);
    r = cli.runAsAdmin({ u"--yes"_s, u"groups"_s, u"send"_s, u"--all-panels"_s });
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(sent(panels.at(0)), expected(1));
    QCOMPARE(sent(panels.at(1)), expected(2));
    panels.at(1)->inspect([](const SimPanelState& s) { QCOMPARE(s.groups.keys(), QList<int>{ 40 }); });

    // Erasing works on one panel only, after its question.
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"groups"_s, u"erase"_s, u"--all-panels"_s }).exitCode, 2);
    QCOMPARE(cli.runAsAdmin({ u"groups"_s, u"erase"_s, u"--panel"_s, u"1"_s }).exitCode, 4);
    r = cli.runAsAdmin({ u"--yes"_s, u"groups"_s, u"erase"_s, u"--panel"_s, u"1"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    panels.at(0)->inspect([](const SimPanelState& s) { QVERIFY(s.groups.isEmpty()); });
}

QTEST_GUILESS_MAIN(CliGroupsTest)
#include "CliGroupsTest.moc"
