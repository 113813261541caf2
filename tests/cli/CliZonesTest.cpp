// kx410ctl zones: the global zones kept from a script with the zone window's rules. The refusals'
// texts are the zone store's tests; here the exit statuses and the language of the messages.

#include "CliRunner.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
QStringList zoneLines(const CliRunner& cli)
{
    QStringList lines = cli.run({ u"zones"_s, u"list"_s }).out.split(u'\n', Qt::SkipEmptyParts);
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
    CliRunner::Result r = cli.run({ u"zones"_s, u"list"_s });
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(r.out.trimmed(), u"NUMBER  NAME"_s);

    // Changes need administrator rights.
    QCOMPARE(cli.run({ u"zones"_s, u"add"_s, u"Bina"_s }).exitCode, 4);

    r = cli.runAsAdmin({ u"zones"_s, u"add"_s, u"Ana Bina"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin({ u"zones"_s, u"add"_s, u"O'Neil Otopark"_s, u"--number"_s, u"64"_s }).out.trimmed(),
             u"64"_s);

    // The store's refusals end with status 1; a number that is no number is a command line mistake.
    for (const QStringList& args : QList<QStringList>{ { u"add"_s, u"Yine"_s, u"--number"_s, u"64"_s },
                                                       { u"add"_s, u"Fazla"_s, u"--number"_s, u"65"_s },
                                                       { u"rename"_s, u"--number"_s, u"7"_s, u"Yok"_s } })
        QCOMPARE(cli.runAsAdmin(QStringList{ u"zones"_s } + args).exitCode, 1);
    QCOMPARE(cli.runAsAdmin({ u"zones"_s, u"add"_s, u"X"_s, u"--number"_s, u"beş"_s }).exitCode, 2);
    QCOMPARE(cli.runAsAdmin({ u"zones"_s, u"delete"_s }).exitCode, 2);

    r = cli.runAsAdmin({ u"zones"_s, u"rename"_s, u"--number"_s, u"64"_s, u"Kapalı Otopark"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(zoneLines(cli), (QStringList{ u"1 Ana Bina"_s, u"64 Kapalı Otopark"_s }));
}

void CliZonesTest::aZoneInUseOrNotConfirmedStays()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    for (const QString& name : { u"Bina"_s, u"Otopark"_s })
        QCOMPARE(cli.runAsAdmin({ u"zones"_s, u"add"_s, name }).exitCode, 0);
    // A new panel maps both its local zones to zone 1.
    QCOMPARE(cli.runAsAdmin({ u"panels"_s, u"add"_s, u"--number"_s, u"3"_s, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
                              u"43001"_s, u"--serial"_s, u"1A"_s })
                 .exitCode,
             0);

    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"zones"_s, u"delete"_s, u"--number"_s, u"1"_s }).exitCode, 1);
    CliRunner::Result r = cli.runAsAdmin({ u"--lang"_s, u"en"_s, u"zones"_s, u"delete"_s, u"--number"_s, u"1"_s });
    QVERIFY2(r.err.contains(u"1 numbered global zone: it is in use and cannot be deleted!\nPanels using it: 3"_s),
             qPrintable(r.err));

    // The question needs an answer: none given, or No, keeps the zone.
    r = cli.runAsAdmin({ u"zones"_s, u"delete"_s, u"--number"_s, u"2"_s });
    QCOMPARE(r.exitCode, 4);
    QVERIFY(r.err.contains(u"--yes"_s));
    QCOMPARE(cli.runAsAdmin({ u"--no"_s, u"zones"_s, u"delete"_s, u"--number"_s, u"2"_s }).exitCode, 5);
    QCOMPARE(zoneLines(cli).size(), 2);

    r = cli.runAsAdmin({ u"--yes"_s, u"zones"_s, u"delete"_s, u"--number"_s, u"2"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(zoneLines(cli), QStringList{ u"1 Bina"_s });
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"zones"_s, u"delete"_s, u"--number"_s, u"2"_s }).exitCode, 1);
}

QTEST_GUILESS_MAIN(CliZonesTest)
#include "CliZonesTest.moc"
