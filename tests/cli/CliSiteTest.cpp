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
    void companiesAndGroups();
    void siteOnADatabaseServer();
    void clientStationReachesOnlyItsPanels();
};

void CliSiteTest::setUpIsNeededAndRepeatable()
{
    CliRunner cli;
    QVERIFY(cli.isValid());
    const DataFolder folder(cli.dataDir());

    // A folder that is not set up: a clear refusal that names the way out, and nothing created.
    CliRunner::Result r = cli.run({ u"panels"_s, u"list"_s });
    QCOMPARE(r.exitCode, 3);
    QVERIFY2(r.err.contains(u"Başlangıç ayarları yapılmadı."_s), qPrintable(r.err));
    QVERIFY2(r.err.contains(u"setup --server"_s), qPrintable(r.err));
    QVERIFY(!QFile::exists(folder.configFile()));

    // A new database needs the administrator password.
    r = cli.run({ u"setup"_s, u"--server"_s });
    QCOMPARE(r.exitCode, 3);
    QVERIFY2(r.err.contains(u"--admin-password"_s), qPrintable(r.err));

    // Given now, the same set-up completes what was missing.
    r = cli.runAsAdmin({ u"setup"_s, u"--server"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(r.out.contains(u"server"_s));
    QVERIFY(QFile::exists(folder.mainDatabase()));
    ConfigFile::ReadResult read = ConfigFile::read(folder.configFile());
    QVERIFY(read.settings.isSetUp());
    QVERIFY(read.settings.isServer());

    // Other choices on a set-up folder need --force; with it the record is rewritten.
    r = cli.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, u"/nowhere/x.db"_s });
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains(u"--force"_s));
    r = cli.run({ u"--lang"_s, u"en"_s, u"setup"_s, u"--server"_s, u"--force"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    read = ConfigFile::read(folder.configFile());
    QCOMPARE(read.settings.language, qint16(1));

    // A client set-up without a database path is refused with the station's own text.
    CliRunner client;
    r = client.run({ u"setup"_s, u"--client"_s });
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains(u"Uzak veritabanı dosya adı belirtilmedi"_s));

    r = cli.run({ u"panels"_s, u"list"_s });
    QCOMPARE(r.exitCode, 0);
}

void CliSiteTest::helpAndCommandLineMistakes()
{
    CliRunner cli;
    CliRunner::Result r = cli.run({ u"--help"_s });
    QCOMPARE(r.exitCode, 0);
    for (const QString& command : { u"setup"_s, u"panels"_s, u"users"_s, u"counters"_s, u"apb"_s, u"door"_s })
        QVERIFY2(r.out.contains(u"\n  "_s + command + u' '), qPrintable(command));

    r = cli.run({ u"users"_s, u"--help"_s });
    QCOMPARE(r.exitCode, 0);
    for (const QString& sub :
         { u"list"_s, u"add"_s, u"import-csv"_s, u"send"_s, u"delete"_s, u"erase"_s, u"receive"_s })
        QVERIFY2(r.out.contains(u"kx410ctl users "_s + sub), qPrintable(sub));
    QCOMPARE(cli.run({ u"help"_s, u"door"_s }).out, cli.run({ u"door"_s, u"--help"_s }).out);

    // Mistakes are found before the station starts, so they need no set-up.
    const QList<QStringList> wrong = {
        { u"frobnicate"_s },
        { u"users"_s, u"fly"_s },
        { u"users"_s, u"list"_s, u"--colour"_s },
        { u"--yes"_s, u"--no"_s, u"panels"_s, u"list"_s },
        { u"--lang"_s, u"fr"_s, u"panels"_s, u"list"_s },
        { u"--answers"_s, u"yes,maybe"_s, u"panels"_s, u"list"_s },
        { u"users"_s, u"send"_s, u"--panel"_s },
    };
    for (const QStringList& args : wrong) {
        r = cli.run(args);
        QVERIFY2(r.exitCode == 2, qPrintable(args.join(u' ') + u" -> "_s + QString::number(r.exitCode)));
        QVERIFY(!r.err.isEmpty());
    }

    // Panel choice mistakes on a set-up site.
    QVERIFY(cli.setUpServer());
    QCOMPARE(cli.run({ u"users"_s, u"send"_s }).exitCode, 2);
    QCOMPARE(cli.run({ u"users"_s, u"send"_s, u"--panel"_s, u"1"_s, u"--all-panels"_s }).exitCode, 2);
    QCOMPARE(
        cli.run({ u"users"_s, u"receive"_s, u"--all-panels"_s, u"--first"_s, u"1"_s, u"--last"_s, u"2"_s }).exitCode,
        2);
    r = cli.run({ u"users"_s, u"send"_s, u"--panel"_s, u"9"_s });
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains(u"not in the panel list"_s));
}

void CliSiteTest::panelListNeedsRightsAndChecksEntries()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    const QStringList first = { u"panels"_s, u"add"_s,  u"--number"_s, u"3"_s,    u"--ip"_s,   u"127.0.0.1"_s,
                                u"--port"_s, u"5003"_s, u"--serial"_s, u"1a2b"_s, u"--name"_s, u"Giriş"_s };

    CliRunner::Result r = cli.run(first);
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s), qPrintable(r.err));
    QVERIFY(r.err.contains(u"--admin-password"_s));
    r = cli.run(QStringList{ u"--lang"_s, u"en"_s } + first);
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"Authorisation error, the administrator password is required!"_s), qPrintable(r.err));
    r = cli.run(QStringList{ u"--admin-password"_s, u"999"_s } + first);
    QCOMPARE(r.exitCode, 4);
    QVERIFY(!cli.run({ u"panels"_s, u"list"_s }).out.contains(u"1A2B"_s));

    r = cli.runAsAdmin(first);
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = cli.runAsAdmin({ u"panels"_s, u"add"_s, u"--number"_s, u"1"_s, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
                         u"5001"_s, u"--serial"_s, u"0FFF"_s });
    QCOMPARE(r.exitCode, 0);

    // The list keeps the order of adding; the serial shows as four upper-case hex digits.
    r = cli.run({ u"panels"_s, u"list"_s });
    QCOMPARE(r.exitCode, 0);
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[1].contains(u"1A2B"_s) && lines[1].contains(u"Giriş"_s) && lines[1].contains(u"5003"_s),
             qPrintable(lines[1]));
    QVERIFY2(lines[2].contains(u"0FFF"_s) && lines[2].simplified().endsWith(u"yes - yes"_s), qPrintable(lines[2]));

    // Refused entries change nothing.
    const QList<QStringList> refused = {
        { u"--number"_s, u"3"_s, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s, u"5009"_s, u"--serial"_s, u"1111"_s },
        { u"--number"_s, u"4"_s, u"--ip"_s, u"127.0.0"_s, u"--port"_s, u"5009"_s, u"--serial"_s, u"1111"_s },
        { u"--number"_s, u"4"_s, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s, u"5009"_s, u"--serial"_s, u"0"_s },
    };
    for (const QStringList& args : refused) {
        r = cli.runAsAdmin(QStringList{ u"panels"_s, u"add"_s } + args);
        QVERIFY2(r.exitCode == 1, qPrintable(args.join(u' ')));
    }
    QCOMPARE(cli.runAsAdmin({ u"panels"_s, u"add"_s, u"--number"_s, u"65"_s, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
                              u"1"_s, u"--serial"_s, u"1"_s })
                 .exitCode,
             2);
    QCOMPARE(cli.run({ u"panels"_s, u"list"_s }).out.split(u'\n', Qt::SkipEmptyParts).size(), 3);

    // Removing asks first; the row stays as an empty slot, so the number is gone from the list.
    QCOMPARE(cli.runAsAdmin({ u"panels"_s, u"remove"_s, u"--panel"_s, u"3"_s }).exitCode, 4);
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"panels"_s, u"remove"_s, u"--panel"_s, u"3"_s }).exitCode, 0);
    QCOMPARE(cli.runAsAdmin({ u"--yes"_s, u"panels"_s, u"remove"_s, u"--panel"_s, u"3"_s }).exitCode, 1);
    r = cli.run({ u"panels"_s, u"list"_s });
    QVERIFY(!r.out.contains(u"1A2B"_s));
    QVERIFY(r.out.contains(u"0FFF"_s));
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 3);
}

void CliSiteTest::usersAddAndImportAllOrNothing()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.runAsAdmin({ u"users"_s, u"add"_s, u"--id"_s, u"7"_s, u"--card"_s, u"7000007"_s,
                                           u"--name"_s, u"Çağrı"_s, u"--surname"_s, u"Öztürk"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    // The same ID twice, and an ID outside the panels' range, are the store's refusals (its tests
    // hold their texts).
    QCOMPARE(cli.runAsAdmin({ u"users"_s, u"add"_s, u"--id"_s, u"7"_s, u"--card"_s, u"123"_s }).exitCode, 1);
    QCOMPARE(cli.runAsAdmin({ u"users"_s, u"add"_s, u"--id"_s, u"20001"_s, u"--card"_s, u"124"_s }).exitCode, 1);
    // A card beyond the panels' 32-bit field is a bad argument.
    r = cli.runAsAdmin({ u"users"_s, u"add"_s, u"--id"_s, u"8"_s, u"--card"_s, u"4294967295"_s });
    QCOMPARE(r.exitCode, 2);
    QVERIFY2(r.err.contains(u"--card takes a whole number from 0 to 2147483647"_s), qPrintable(r.err));

    // One bad line (3: a card that is no number, 5: too few fields): both reported by line
    // number, and nothing of the file stored.
    const QString bad = cli.writeFile(u"bad.csv"_s,
                                      u"ID;Kart ID;Adi;Soyadi\n"
                                      "1;1000001;Ali;Yılmaz\n"
                                      "2;kart;Veli;Kara\n"
                                      "3;1000003;Ayşe;Demir\n"
                                      "4\n"_s);
    r = cli.runAsAdmin({ u"users"_s, u"import-csv"_s, bad });
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"3 nolu satır"_s), qPrintable(r.err));
    QVERIFY2(r.err.contains(u"5 nolu satır"_s), qPrintable(r.err));
    QVERIFY(!r.err.contains(u"2 nolu satır"_s));
    r = cli.run({ u"users"_s, u"list"_s });
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 2);

    // Without rights the file is not even read.
    QCOMPARE(cli.run({ u"users"_s, u"import-csv"_s, bad }).exitCode, 4);
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
    r = cli.run({ u"users"_s, u"list"_s });
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines[1].startsWith(u"1 "_s) && lines[1].contains(u"Yılmaz"_s));
    QVERIFY(lines[3].startsWith(u"7 "_s) && lines[3].contains(u"Şahin"_s));
    r = cli.run({ u"users"_s, u"list"_s, u"--search"_s, u"kara"_s });
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 2);
    r = cli.run({ u"users"_s, u"list"_s, u"--search"_s, u"ŞAHİN"_s });
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 2);

    // A stored name holding a terminal escape is shown by its code, never sent raw.
    QCOMPARE(cli.runAsAdmin(
                    { u"users"_s, u"add"_s, u"--id"_s, u"9"_s, u"--card"_s, u"9009"_s, u"--name"_s, u"Kötü\x1b[2J"_s })
                 .exitCode,
             0);
    r = cli.run({ u"users"_s, u"list"_s, u"--search"_s, u"kötü"_s });
    QVERIFY2(r.out.contains(u"Kötü\\x1B[2J"_s), qPrintable(r.out));
    QVERIFY(!r.out.contains(QChar(0x1b)));

    QCOMPARE(cli.runAsAdmin({ u"users"_s, u"remove"_s, u"--user"_s, u"2"_s }).exitCode, 0);
    QCOMPARE(cli.runAsAdmin({ u"users"_s, u"remove"_s, u"--user"_s, u"2"_s }).exitCode, 1);
}

void CliSiteTest::companiesAndGroups()
{
    CliRunner cli;
    QVERIFY(cli.setUpServer());
    CliRunner::Result r = cli.runAsAdmin({ u"companies"_s, u"add"_s, u"Kuzey Ltd"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"1"_s);
    QCOMPARE(cli.runAsAdmin({ u"companies"_s, u"add"_s, u"Güney AŞ"_s, u"--number"_s, u"5"_s }).out.trimmed(), u"5"_s);
    QCOMPARE(cli.runAsAdmin({ u"companies"_s, u"add"_s, u"İkinci"_s, u"--number"_s, u"5"_s }).exitCode, 1);
    r = cli.run({ u"companies"_s, u"list"_s });
    QVERIFY(r.out.contains(u"Kuzey Ltd"_s) && r.out.contains(u"Güney AŞ"_s) && !r.out.contains(u"İkinci"_s));
    QCOMPARE(cli.run({ u"departments"_s, u"add"_s, u"Muhasebe"_s }).exitCode, 4);

    QCOMPARE(cli.runAsAdmin({ u"groups"_s, u"add"_s, u"Tüm kapılar"_s, u"--number"_s, u"1"_s }).exitCode, 0);
    QCOMPARE(cli.runAsAdmin({ u"groups"_s, u"add"_s, u"Yine"_s, u"--number"_s, u"1"_s }).exitCode, 1);
    QCOMPARE(cli.runAsAdmin({ u"groups"_s, u"add"_s, u"Fazla"_s, u"--number"_s, u"1281"_s }).exitCode, 2);
    r = cli.run({ u"groups"_s, u"list"_s });
    QVERIFY(r.out.contains(u"Tüm kapılar"_s));
    QCOMPARE(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 2);
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
    CliRunner::Result r = cli.runAsAdmin(db + QStringList{ u"setup"_s, u"--server"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(!QFile::exists(DataFolder(cli.dataDir()).mainDatabase()));
    r = cli.runAsAdmin(db + QStringList{ u"users"_s, u"add"_s, u"--id"_s, u"3"_s, u"--card"_s, u"33"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(cli.run(db + QStringList{ u"users"_s, u"list"_s }).out.contains(u"33"_s));
    // Without --db the folder's own database is meant: a new one, which has no administrator yet.
    r = cli.run({ u"users"_s, u"list"_s });
    QCOMPARE(r.exitCode, 3);
    QVERIFY(!r.out.contains(u"33"_s));
}

void CliSiteTest::clientStationReachesOnlyItsPanels()
{
    CliRunner server;
    QVERIFY(server.setUpServer());
    for (const QString& n : { u"1"_s, u"2"_s }) {
        QCOMPARE(server
                     .runAsAdmin({ u"panels"_s, u"add"_s, u"--number"_s, n, u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
                                   u"1"_s, u"--serial"_s, u"1"_s + n })
                     .exitCode,
                 0);
    }
    CliRunner client;
    const QString shared = DataFolder(server.dataDir()).mainDatabase();
    CliRunner::Result r = client.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, shared, u"--watch"_s, u"1"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(r.out.contains(u"client"_s));

    // The client sees the server's list but may only address the panels it watches.
    QVERIFY(client.run({ u"panels"_s, u"list"_s }).out.contains(u"12"_s));
    r = client.runAsAdmin({ u"--yes"_s, u"users"_s, u"send"_s, u"--panel"_s, u"2"_s });
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"Bu panele Client üzerinden erişilemez!"_s), qPrintable(r.err));
    r = client.runAsAdmin({ u"--yes"_s, u"panels"_s, u"search"_s, u"--seconds"_s, u"1"_s, u"--local-port"_s, u"0"_s });
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.all().contains(u"Bu işlem ancak server üzerinde yapılabilir"_s), qPrintable(r.all()));

    // A client whose database is gone does not start, and says so.
    CliRunner lost;
    QCOMPARE(lost.run({ u"setup"_s, u"--client"_s, u"--remote-db"_s, lost.dataDir() + u"/none.db"_s }).exitCode, 3);
    r = lost.run({ u"panels"_s, u"list"_s });
    QCOMPARE(r.exitCode, 3);
    QVERIFY2(r.err.contains(u"Veritabanına bağlantı sağlanamadı."_s), qPrintable(r.err));
}

QTEST_GUILESS_MAIN(CliSiteTest)
#include "CliSiteTest.moc"
