// kx410ctl calendars, programme and permission: what they keep, and the frames that reach a
// simulated panel, byte by byte.

#include "CliRunner.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
QStringList framesOf(SimPanel* panel, const QByteArray& code)
{
    QStringList frames;
    for (const QByteArray& frame : panel->recentRequests()) {
        if (frame.mid(1, 2) == code)
            frames << QString::fromLatin1(frame);
    }
    return frames;
}
} // namespace

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
    SimulatorHost sim;
    SimulatorHost::Options options;
    options.statusPort = 0;
    options.searchPort = 0;
    QString error;
    QVERIFY2(sim.start(options, &error), qPrintable(error));
    SimPanelConfig config;
    config.number = 3;
    config.serial = 0x12AB;
    SimPanel* panel = sim.addPanel(config);
    QVERIFY(panel);
    const auto admin = [&](const QStringList& args) { return cli.runAsAdmin(args); };
    QCOMPARE(admin({ u"panels"_s, u"add"_s, u"--number"_s, u"3"_s, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
                     QString::number(panel->port()), u"--serial"_s, u"12ab"_s })
                 .exitCode,
             0);

    // Calendars: a date that does not exist is a command line mistake, number 9 a refusal.
    QCOMPARE(
        admin({ u"calendars"_s, u"add"_s, u"Yaz"_s, u"--number"_s, u"2"_s, u"--date1"_s, u"30/02/2026"_s }).exitCode,
        2);
    QCOMPARE(admin({ u"calendars"_s, u"add"_s, u"Yaz"_s, u"--number"_s, u"9"_s }).exitCode, 1);
    QCOMPARE(admin({ u"calendars"_s, u"add"_s, u"Vardiya"_s, u"--number"_s, u"1"_s, u"--type"_s, u"hours"_s,
                     u"--group1"_s, u"1"_s, u"--time1"_s, u"08:00"_s, u"--group2"_s, u"2"_s, u"--time2"_s, u"17:00"_s,
                     u"--group3"_s, u"3"_s })
                 .exitCode,
             0);
    QCOMPARE(admin({ u"calendars"_s, u"add"_s, u"Yaz"_s, u"--number"_s, u"2"_s, u"--date1"_s, u"01/07/2026"_s,
                     u"--date2"_s, u"2026-08-31"_s, u"--group2"_s, u"12"_s })
                 .exitCode,
             0);
    CliRunner::Result r = admin({ u"--yes"_s, u"calendars"_s, u"send"_s, u"--panel"_s, u"3"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(framesOf(panel, "CZ"),
             (QStringList{ u"%CZ12AB00310080017000000000000000000000100020003**"_s,
                           u"%CZ12AB00321000000000107202631082026000000120000**"_s }));

    // Programmed slots: a new panel's 16 slots a day, one set, sent in day and slot order.
    r = cli.run({ u"programme"_s, u"show"_s, u"--panel"_s, u"3"_s, u"--day"_s, u"2"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 1 + 16);
    QCOMPARE(
        admin({ u"programme"_s, u"set"_s, u"--panel"_s, u"3"_s, u"--day"_s, u"2"_s, u"--slot"_s, u"17"_s }).exitCode,
        2);
    QCOMPARE(admin({ u"programme"_s, u"set"_s, u"--panel"_s, u"3"_s, u"--day"_s, u"2"_s, u"--slot"_s, u"5"_s,
                     u"--active"_s, u"on"_s, u"--start"_s, u"12:00"_s, u"--end"_s, u"13:30"_s, u"--doors"_s, u"2,4"_s,
                     u"--relays"_s, u"all"_s })
                 .exitCode,
             0);
    r = admin({ u"--yes"_s, u"programme"_s, u"send"_s, u"--panel"_s, u"3"_s });
    QCOMPARE(r.exitCode, 0);
    const QStringList slotList = framesOf(panel, "ZW");
    QCOMPARE(slotList.size(), 7 * 16);
    QCOMPARE(slotList.at(16 + 4), u"%ZW12AB0032051120013300101000011110000**"_s);
    QCOMPARE(slotList.at(0), u"%ZW12AB0031010000000000000000000000000**"_s);
    QCOMPARE(admin({ u"--yes"_s, u"programme"_s, u"receive"_s, u"--panel"_s, u"3"_s }).exitCode, 0);
    QCOMPARE(framesOf(panel, "ZR").value(20), u"%ZR12AB003205**"_s);

    // Approvals of one group's members.
    QCOMPARE(admin({ u"groups"_s, u"add"_s, u"Taşeron"_s, u"--number"_s, u"7"_s }).exitCode, 0);
    for (const QString& id : { u"41"_s, u"40"_s })
        QCOMPARE(
            admin({ u"users"_s, u"add"_s, u"--id"_s, id, u"--card"_s, u"90"_s + id, u"--group"_s, u"7"_s }).exitCode,
            0);
    QCOMPARE(cli.run({ u"permission"_s, u"list"_s, u"--group"_s, u"0"_s }).exitCode, 1);
    QCOMPARE(cli.run({ u"permission"_s, u"all"_s, u"--group"_s, u"7"_s }).exitCode, 0);
    QCOMPARE(
        cli.run({ u"permission"_s, u"set"_s, u"--group"_s, u"7"_s, u"--user"_s, u"41"_s, u"--approved"_s, u"off"_s })
            .exitCode,
        0);
    r = admin({ u"--yes"_s, u"permission"_s, u"send"_s, u"--group"_s, u"7"_s, u"--panel"_s, u"3"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(framesOf(panel, "CS"), (QStringList{ u"%CS12AB003000401**"_s, u"%CS12AB003000410**"_s }));
    QCOMPARE(admin({ u"permission"_s, u"reset"_s, u"--at"_s, u"03:15"_s, u"--to-panels"_s, u"on"_s }).exitCode, 0);
    QCOMPARE(cli.run({ u"permission"_s, u"reset"_s }).out.trimmed(), u"reset: 03:15, to panels: on"_s);
}

QTEST_GUILESS_MAIN(CliCalendarsTest)
#include "CliCalendarsTest.moc"
