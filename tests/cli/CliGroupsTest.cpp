// kx410ctl groups: groups kept with the page's rules, doors set per panel, and the panels their
// sends reach.

#include "CliSimSite.h"
#include "support/FaultOf.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
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
    void sendReachesTheChosenPanels();
};

void CliGroupsTest::groupsAreKeptByThePagesRules()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.runAsAdmin("groups add Ofis --access-count 300 --anti-passback-off on");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin("groups add Son --number 1280").exitCode, 0);

    // The store's refusals (their texts are the store's test) end with 1, option mistakes with 2.
    const QList<std::tuple<const char*, int, QString>> refused = {
        { "add Yine --number 1", 1, QString() },
        { "add Fazla", 1, QString() },
        { "add Sıfır --number 0", 2, QString() },
        { "set --number 7 --name Yok", 1, QString() },
        { "doors 1 --panel 3 --doors 1000", 1, u"Panel veritabanında bulunamadı."_s },
        { "doors 1 --panel 3 --doors 12", 2, u"--doors"_s },
        { "set --number 1 --daily-approval maybe", 2, u"--daily-approval"_s },
    };
    for (const auto& [args, code, text] : refused) {
        r = cli.runAsAdmin(QStringList{ u"groups"_s } + CliRunner::words(args));
        QVERIFY2(r.exitCode == code, qPrintable(QString::fromUtf8(args) + u" -> "_s + r.all()));
        QVERIFY2(!r.err.isEmpty() && r.err.contains(text), qPrintable(r.err));
    }

    QCOMPARE(cli.runAsAdmin("--yes groups delete --number 1280").exitCode, 0);

    r = cli.runAsAdmin(R"(groups set --number 1 --name "Ofis B" --inside-count-zone 100 --anti-passback-off off )"
                       "--daily-approval on");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(simplifiedLines(cli.run("groups list").out),
             (QStringList{ u"NUMBER NAME"_s, u"1 Ofis B"_s,
                           u"--access-count 300 --inside-count-zone 100 --daily-approval on"_s }));
}

void CliGroupsTest::sendReachesTheChosenPanels()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliSimSite site(cli);
    QVERIFY2(site.isStarted(), qPrintable(site.error()));
    const QList<SimPanel*> panels{ site.addPanel(1, 0x2A01), site.addPanel(2, 0x2A02) };
    QVERIFY2(!panels.contains(nullptr), qPrintable(site.error()));

    // No groups: nothing reaches a panel.
    CliRunner::Result r = cli.runAsAdmin("--yes groups send --panel 1");
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(panels.at(0)->totalRequests(), 0);

    for (const char* step : {
             "add Ofis --access-count 300 --access-count-zone 99 --inside-count 9999 --inside-count-zone 0 "
             "--repeat-block-off on",
             "add Depo --number 40 --daily-approval on --clear-inside-at-night on",
             "doors 1 --panel 1 --doors 1100 --time-groups 1,1,0,0 --zones 1,1,1,1",
             "doors 40 --panel 2 --doors 0011 --time-groups 0,0,12,3",
         }) {
        r = cli.runAsAdmin(QStringList{ u"groups"_s } + CliRunner::words(step));
        QVERIFY2(r.exitCode == 0, qPrintable(QString::fromUtf8(step) + u" -> "_s + r.all()));
    }
    QCOMPARE(simplifiedLines(cli.run("groups list").out),
             (QStringList{ u"NUMBER NAME"_s, u"1 Ofis"_s,
                           u"--access-count 300 --access-count-zone 99 --inside-count 9999 --inside-count-zone 0 "
                           "--repeat-block-off on"_s,
                           u"--panel 1 --doors 1100 --time-groups 1,1,0,0 --zones 1,1,1,1"_s, u"40 Depo"_s,
                           u"--daily-approval on --clear-inside-at-night on"_s,
                           u"--panel 2 --doors 0011 --time-groups 0,0,12,3 --zones 1,1,1,1"_s }));

    // What the panel holds is the group transfer's test; here, which panel gets it.
    r = cli.runAsAdmin("--yes groups send --panel 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    panels.at(0)->inspect([](const SimPanelState& s) { QCOMPARE(s.groups.size(), 2); });
    QCOMPARE(panels.at(1)->totalRequests(), 0);
    // Without connecting: panel 1 holds what was sent, panel 2 nothing yet; an edit shows on both.
    r = cli.run("groups send --dry-run");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"panel 1: "_s) && r.out.contains(u"; same as the last send"_s), qPrintable(r.out));
    QVERIFY(r.out.contains(u"all would be new to the panel"_s));
    QCOMPARE(cli.runAsAdmin("groups set --number 1 --access-count 5").exitCode, 0);
    QVERIFY2(cli.run("groups send --dry-run").out.contains(u"; differs from the last send"_s), "no difference");
    QCOMPARE(panels.at(0)->totalRequests(), 2);
    QCOMPARE(cli.runAsAdmin("groups set --number 1 --access-count 300").exitCode, 0);

    // A panel that does not take one group: the exit says it was not all.
    panels.at(1)->setFault(faultOf(SimFault::Mode::Refuse, "TN", 1));
    QCOMPARE(cli.mismatch({ { "--yes groups send --all-panels", 1 },
                            { "--yes groups erase --all-panels", 2 },
                            { "--yes groups erase --panel 1", 0 } }),
             QString());
    panels.at(0)->inspect([](const SimPanelState& s) { QVERIFY(s.groups.isEmpty()); });
}

QTEST_GUILESS_MAIN(CliGroupsTest)
#include "CliGroupsTest.moc"
