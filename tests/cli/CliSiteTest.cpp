// kx410ctl as a script uses it to build a site: set-up, help, the panel list, users and the
// small tables. Every case runs the real program on a temporary data folder.

#include "CliRunner.h"
#include "store/ConfigFile.h"
#include "store/DataFolder.h"
#include "support/TestDatabases.h"

#include <QFile>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class CliSiteTest : public QObject
{
    Q_OBJECT

private slots:
    void setUpIsNeededAndRepeatable();
    void helpAndCommandLineMistakes();
    void panelListNeedsRightsAndChecksEntries();
    void usersAddAndImportAllOrNothing();
    void companies();
    void siteOnADatabaseServer();
    void clientStationReachesOnlyItsPanels();
};

void CliSiteTest::setUpIsNeededAndRepeatable()
{
    CliRunner cli;
    const DataFolder folder(cli.dataDir());

    // A folder that is not set up: a clear refusal that names the way out, and nothing created.
    CliRunner::Result r = cli.run("panels list");
    QCOMPARE(r.exitCode, 3);
    QVERIFY2(r.err.contains(u"Başlangıç ayarları yapılmadı."_s), qPrintable(r.err));
    QVERIFY2(r.err.contains(u"setup --server"_s), qPrintable(r.err));
    QVERIFY(!QFile::exists(folder.configFile()));

    // A new database needs the administrator password.
    r = cli.run("setup --server");
    QCOMPARE(r.exitCode, 3);
    QVERIFY2(r.err.contains(u"--admin-password"_s), qPrintable(r.err));

    // Given now, the same set-up completes what was missing; other choices on a set-up folder
    // need --force, and with it the record is rewritten.
    QCOMPARE(cli.mismatch({ { "setup --server", 0 },
                            { "setup --client --remote-db /nowhere/x.db", 1, false },
                            { "--lang en setup --server --force", 0, false },
                            { "panels list", 0, false } }),
             QString());
    QCOMPARE(ConfigFile::read(folder.configFile()).settings.language, qint16(1));
    // A client set-up without a database path is refused.
    CliRunner client;
    QCOMPARE(client.run("setup --client").exitCode, 1);
}

void CliSiteTest::helpAndCommandLineMistakes()
{
    CliRunner cli;
    CliRunner::Result r = cli.run("--help");
    QCOMPARE(r.exitCode, 0);
    for (const QString& command : { u"setup"_s, u"panels"_s, u"users"_s, u"counters"_s, u"apb"_s, u"door"_s })
        QVERIFY2(r.out.contains(u"\n  "_s + command + u' '), qPrintable(command));

    r = cli.run("users --help");
    QVERIFY2(r.exitCode == 0 && r.out.contains(u"kx410ctl users import-csv"_s), qPrintable(r.all()));
    QCOMPARE(cli.run("help door").out, cli.run("door --help").out);

    // Mistakes are found before the station starts, so they need no set-up.
    for (const char* args : { "frobnicate", "users fly", "users list --colour", "--yes --no panels list",
                              "--lang fr panels list", "--answers yes,maybe panels list", "users send --panel" }) {
        r = cli.run(args);
        QVERIFY2(r.exitCode == 2 && !r.err.isEmpty(), args);
    }

    // Panel choice mistakes on a set-up site.
    QVERIFY(cli.setUpServer());
    QCOMPARE(cli.mismatch({ { "users send", 2, false },
                            { "users send --panel 1 --all-panels", 2, false },
                            { "users receive --all-panels --first 1 --last 2", 2, false } }),
             QString());
    r = cli.run("users send --panel 9");
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains(u"not in the panel list"_s));
}

void CliSiteTest::panelListNeedsRightsAndChecksEntries()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    const QStringList first
        = CliRunner::words("panels add --number 3 --ip 127.0.0.1 --port 5003 --serial 1a2b --name Giriş");

    // Without rights nothing is added (a wrong password is the command line's login test).
    QCOMPARE(cli.run(first).exitCode, 4);
    QVERIFY(!cli.run("panels list").out.contains(u"1A2B"_s));
    QVERIFY(cli.runAsAdmin(first).exitCode == 0);
    // Refused entries change nothing: a number taken, a short address, serial 0, a number out of range.
    QCOMPARE(cli.mismatch({ { "panels add --number 1 --ip 127.0.0.1 --port 5001 --serial 0FFF", 0 },
                            { "panels add --number 3 --ip 127.0.0.1 --port 5009 --serial 1111", 1 },
                            { "panels add --number 4 --ip 127.0.0 --port 5009 --serial 1111", 1 },
                            { "panels add --number 4 --ip 127.0.0.1 --port 5009 --serial 0", 1 },
                            { "panels add --number 65 --ip 127.0.0.1 --port 1 --serial 1", 2 } }),
             QString());

    // The list keeps the order of adding; the serial shows as four upper-case hex digits.
    const QStringList lines = cli.listed("panels list");
    QVERIFY2(lines.size() == 3 && lines[1].contains(u"1A2B"_s) && lines[1].contains(u"Giriş"_s)
                 && lines[1].contains(u"5003"_s) && lines[2].contains(u"0FFF"_s) && lines[2].endsWith(u"yes - yes"_s),
             qPrintable(lines.join(u'\n')));
}

void CliSiteTest::usersAddAndImportAllOrNothing()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.runAsAdmin("users add --id 7 --card 7000007 --name Çağrı --surname Öztürk");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    // The same ID twice is the store's refusal (its tests hold the texts).
    QCOMPARE(cli.runAsAdmin("users add --id 7 --card 123").exitCode, 1);
    // A card beyond the panels' 32-bit field is a bad argument.
    r = cli.runAsAdmin("users add --id 8 --card 4294967295");
    QCOMPARE(r.exitCode, 2);
    QVERIFY2(r.err.contains(u"--card takes a whole number from 0 to 2147483647"_s), qPrintable(r.err));

    // A bad line is reported by its number (the import's rules are its own test).
    const QString bad = cli.writeFile(u"bad.csv"_s, u"1;1000001;Ali;Yılmaz\n2;kart;Veli;Kara\n"_s);
    r = cli.runAsAdmin({ u"users"_s, u"import-csv"_s, bad });
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"2 nolu satır"_s), qPrintable(r.err));
    QCOMPARE(cli.runAsAdmin({ u"users"_s, u"import-csv"_s, cli.writeFile(u"none"_s, {}) + u"x"_s }).exitCode, 1);

    const QString good = cli.writeFile(u"good.csv"_s,
                                       u"ID;Kart ID;Adi;Soyadi;Grup No\n"
                                       "1;1000001;Ali;Yılmaz;1\n"
                                       "\n"
                                       "7;7000007;Çağrı;Şahin;2\n"
                                       "2;1000002;Veli;Kara\n"_s);
    r = cli.runAsAdmin({ u"users"_s, u"import-csv"_s, good });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"2 added, 1 updated"_s), qPrintable(r.out));
    const QStringList lines = cli.listed("users list");
    QVERIFY2(lines.size() == 4 && lines[1].startsWith(u"1 "_s) && lines[1].contains(u"Yılmaz"_s)
                 && lines[3].startsWith(u"7 "_s) && lines[3].contains(u"Şahin"_s),
             qPrintable(lines.join(u'\n')));
    QCOMPARE(cli.listed("users list --search ŞAHİN").size(), 2);

    // A stored name holding a terminal escape is shown by its code, never sent raw.
    QCOMPARE(cli.runAsAdmin(
                    { u"users"_s, u"add"_s, u"--id"_s, u"9"_s, u"--card"_s, u"9009"_s, u"--name"_s, u"Kötü\x1b[2J"_s })
                 .exitCode,
             0);
    r = cli.run("users list --search kötü");
    QVERIFY2(r.out.contains(u"Kötü\\x1B[2J"_s), qPrintable(r.out));
    QVERIFY(!r.out.contains(QChar(0x1b)));
    QCOMPARE(cli.mismatch({ { "users remove --user 2", 0 }, { "users remove --user 2", 1 } }), QString());
}

void CliSiteTest::companies()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.runAsAdmin("companies add \"Kuzey Ltd\"");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin("companies add \"Güney AŞ\" --number 5").out.trimmed(), u"5"_s);
    QCOMPARE(cli.mismatch({ { "companies add İkinci --number 5", 1 }, { "departments add Muhasebe", 4, false } }),
             QString());
    r = cli.run("companies list");
    QVERIFY(r.out.contains(u"Kuzey Ltd"_s) && r.out.contains(u"Güney AŞ"_s) && !r.out.contains(u"İkinci"_s));
}

void CliSiteTest::siteOnADatabaseServer()
{
    KX_REQUIRE_ENGINE(TestDatabases::PostgreSQL);
    TestDatabases databases;
    QString error;
    const QString url = databases.freshLocation(TestDatabases::PostgreSQL, &error);
    QVERIFY2(!url.isEmpty(), qPrintable(error));
    CliRunner cli;
    const QStringList db = { u"--db"_s, url };
    CliRunner::Result r = cli.runAsAdmin(db + CliRunner::words("setup --server"));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(!QFile::exists(DataFolder(cli.dataDir()).mainDatabase()));
    r = cli.runAsAdmin(db + CliRunner::words("users add --id 3 --card 33"));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(cli.run(db + QStringList{ u"users"_s, u"list"_s }).out.contains(u"33"_s));
    // Without --db the folder's own database is meant: a new one, which has no administrator yet.
    QCOMPARE(cli.run("users list").exitCode, 3);
}

void CliSiteTest::clientStationReachesOnlyItsPanels()
{
    CliRunner server;
    QVERIFY(server.setUpServer());
    QCOMPARE(server.runAsAdmin("panels add --number 1 --ip 127.0.0.1 --port 1 --serial 11").exitCode, 0);
    QCOMPARE(server.runAsAdmin("panels add --number 2 --ip 127.0.0.1 --port 1 --serial 12").exitCode, 0);
    CliRunner client;
    const QString shared = DataFolder(server.dataDir()).mainDatabase();
    CliRunner::Result r = client.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, shared, u"--watch"_s, u"1"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));

    // The client sees the server's list but may only address the panels it watches (the
    // refusals are the walk's and the search's own tests).
    QVERIFY(client.run("panels list").out.contains(u"12"_s));
    QCOMPARE(client.mismatch({ { "--yes users send --panel 2", 1 } }), QString());

    // A client whose database is gone does not start (what it says is the start's own test).
    CliRunner lost;
    QCOMPARE(lost.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, lost.dataDir() + u"/none.db"_s }).exitCode, 3);
    QCOMPARE(lost.run("panels list").exitCode, 3);
}

QTEST_GUILESS_MAIN(CliSiteTest)
#include "CliSiteTest.moc"
