#include "store/StartupSequence.h"

#include "ScriptedStartupUi.h"
#include "store/ConfigFile.h"
#include "store/DataFolder.h"
#include "store/Database.h"
#include "store/InstanceLock.h"
#include "store/Translate.h"
#include "support/TestDatabases.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString ClosingSuffix = u"\nProgram kapatılacak!"_s;

std::function<bool(StationSettings&)> chooseServer(int language)
{
    return [language](StationSettings& s) { return s.applyStartChoices(true, QString(), {}, language).isEmpty(); };
}

std::function<bool(StationSettings&)> chooseClient(const QString& path)
{
    return [path](StationSettings& s) { return s.applyStartChoices(false, path, {}, 0).isEmpty(); };
}

void writeSettings(const DataFolder& folder, const StationSettings& s)
{
    QVERIFY(folder.ensureExists());
    QVERIFY(ConfigFile::write(folder.configFile(), s));
}

StationSettings serverSettings()
{
    StationSettings s;
    s.applyStartChoices(true, QString(), {}, 0);
    return s;
}

StartupResult runStart(ScriptedStartupUi& ui, const QString& dataDir, const QString& db = QString())
{
    StartupOptions options;
    options.dataDir = dataDir;
    options.databaseOverride = db;
    return StartupSequence(ui, options).run();
}

QVariant adminPassword(Database& db)
{
    return db.scalar(u"SELECT \"AdminPassword\" FROM \"ProgInit\""_s);
}

} // namespace

class StartupSequenceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void firstStartAsServerThenAgain()
    {
        QTemporaryDir dir;
        const DataFolder folder(dir.path());
        ScriptedStartupUi ui;
        ui.dialog = chooseServer(1);
        ui.passwords = { { u"12a"_s, u"12a"_s }, { u"1234"_s, u"4321"_s }, { u" 1234"_s, u"1234 "_s } };

        StartupResult r = runStart(ui, dir.path());
        QVERIFY2(r.ok, qPrintable(r.failure.turkish()));
        QCOMPARE(
            ui.events,
            (QStringList{ u"dialog"_s, u"password: Yönetici şifresini belirleyiniz"_s,
                          u"password: Yönetici şifresi olarak sadece sayısal değer giriniz"_s,
                          u"password: Şifreler birbirini tutmuyor!"_s, u"message: Yönetici şifresi belirlendi!"_s }));
        QCOMPARE(r.title, u"Halvoran KX-410 Panel Konfigürasyon V2.1 - SERVER"_s);
        QCOMPARE(r.databaseLocation, folder.mainDatabase());
        QCOMPARE(adminPassword(*r.database).toLongLong(), 1234);

        // The chosen settings were written, the language database was built and is in force.
        const ConfigFile::ReadResult saved = ConfigFile::read(folder.configFile());
        QCOMPARE(saved.status, ConfigFile::Status::Ok);
        QVERIFY(saved.settings.isServer());
        QCOMPARE(saved.settings, r.settings);
        QCOMPARE(Translate(u"Program kapatılacak!"_s), u"The program will be closed!"_s);

        // While this station runs, a second one on the same folder is refused before anything else.
        ScriptedStartupUi second;
        second.dialog = chooseServer(0);
        const StartupResult refused = runStart(second, dir.path());
        QVERIFY(!refused.ok);
        QCOMPARE(second.events, QStringList{ u"message: "_s + InstanceLock::alreadyRunningMessage().turkish() });

        // Next start: no dialog, no password question.
        r = StartupResult();
        ScriptedStartupUi again;
        const StartupResult r2 = runStart(again, dir.path());
        QVERIFY2(r2.ok, qPrintable(r2.failure.turkish()));
        QVERIFY(again.events.isEmpty());
    }

    void cancelledDialogEndsTheStart()
    {
        QTemporaryDir dir;
        const DataFolder folder(dir.path());
        ScriptedStartupUi ui; // cancels
        const StartupResult r = runStart(ui, dir.path());
        QVERIFY(!r.ok);
        QCOMPARE(r.failure.turkish(), u"Başlangıç ayarları yapılmadı."_s + ClosingSuffix);
        QCOMPARE(ui.events, (QStringList{ u"dialog"_s, u"message: "_s + r.failure.turkish() }));
        // A damaged settings file reads as no settings (the settings file's test): asked the same way.
        QVERIFY(!QFileInfo::exists(folder.configFile()));
        QVERIFY(!QFileInfo::exists(folder.mainDatabase()));
        // The lock was let go with the failed start.
        InstanceLock lock(folder.lockFile());
        QVERIFY(lock.tryLock());
    }

    void clientNeverCreatesItsDatabase()
    {
        QTemporaryDir dir;
        const QString remote = dir.filePath(u"server/share/KX410_DB200.db"_s);
        ScriptedStartupUi ui;
        ui.dialog = chooseClient(remote);
        const StartupResult r = runStart(ui, dir.filePath(u"client"_s));
        QVERIFY(!r.ok);
        QCOMPARE(r.failure.turkish(), u"Veritabanına bağlantı sağlanamadı."_s + ClosingSuffix);
        QCOMPARE(ui.messages(), QStringList{ r.failure.turkish() });
        QVERIFY(!QFileInfo::exists(dir.filePath(u"server"_s)));
        // Files that hold no station database are refused as they are in the database's own test.
    }

    void clientOnTheServersDatabase()
    {
        QTemporaryDir dir;
        {
            ScriptedStartupUi server;
            server.dialog = chooseServer(0);
            server.passwords = { { u"77"_s, u"77"_s } };
            QVERIFY(runStart(server, dir.filePath(u"server"_s)).ok);
        }
        const QString shared = DataFolder(dir.filePath(u"server"_s)).mainDatabase();
        StationSettings s;
        QVERIFY(s.applyStartChoices(false, u"  "_s + shared + u"  "_s, { 4 }, 2).isEmpty());
        writeSettings(DataFolder(dir.filePath(u"client"_s)), s);

        ScriptedStartupUi ui;
        const StartupResult r = runStart(ui, dir.filePath(u"client"_s));
        QVERIFY2(r.ok, qPrintable(r.failure.turkish()));
        QVERIFY(ui.events.isEmpty());
        QCOMPARE(r.title, u"Halvoran KX-410 Panel Konfigürasyon V2.1 - CLIENT"_s);
        QCOMPARE(r.databaseLocation, shared);
        QCOMPARE(adminPassword(*r.database).toLongLong(), 77);
        QCOMPARE(r.settings.watchedPanels(), QList<int>{ 4 });
        QVERIFY(!QFileInfo::exists(DataFolder(dir.filePath(u"client"_s)).mainDatabase()));
    }

    void languageDatabaseFailureEndsTheStart()
    {
        QTemporaryDir dir;
        const DataFolder folder(dir.path());
        writeSettings(folder, serverSettings());
        QFile garbage(folder.languageDatabase());
        QVERIFY(garbage.open(QIODevice::WriteOnly));
        garbage.write(QByteArray(2048, '\x5a'));
        garbage.close();

        ScriptedStartupUi ui;
        const StartupResult r = runStart(ui, dir.path());
        QVERIFY(!r.ok);
        QCOMPARE(r.failure.turkish(), u"Program dil seçenekleri veritabanına bağlantı sağlanamadı."_s + ClosingSuffix);
        QCOMPARE(ui.messages(), QStringList{ r.failure.turkish() });
        // The start stopped there: no main database was made, the broken file is untouched.
        QVERIFY(!QFileInfo::exists(folder.mainDatabase()));
        QCOMPARE(QFileInfo(folder.languageDatabase()).size(), 2048);
    }

    void cancelledPasswordEndsTheStart()
    {
        QTemporaryDir dir;
        ScriptedStartupUi ui;
        ui.dialog = chooseServer(0);
        const StartupResult r = runStart(ui, dir.path());
        QVERIFY(!r.ok);
        QCOMPARE(r.failure.turkish(), u"Yönetici şifresi belirlenmedi."_s + ClosingSuffix);
    }

    void serverAndClientOnPostgreSql()
    {
        KX_REQUIRE_ENGINE(TestDatabases::PostgreSQL);
        TestDatabases databases;
        QString error;
        const QString url = databases.freshLocation(TestDatabases::PostgreSQL, &error);
        QVERIFY2(!url.isEmpty(), qPrintable(error));
        QTemporaryDir dir;
        {
            // A server given the address fills the empty database.
            ScriptedStartupUi ui;
            ui.dialog = chooseServer(0);
            ui.passwords = { { u"9"_s, u"9"_s } };
            const StartupResult r = runStart(ui, dir.filePath(u"server"_s), url);
            QVERIFY2(r.ok, qPrintable(r.failure.turkish()));
            QCOMPARE(r.databaseLocation, url);
            QVERIFY(r.database->isPostgreSQL());
            QVERIFY(!QFileInfo::exists(DataFolder(dir.filePath(u"server"_s)).mainDatabase()));
        }
        {
            ScriptedStartupUi ui;
            ui.dialog = chooseClient(url);
            const StartupResult r = runStart(ui, dir.filePath(u"client"_s));
            QVERIFY2(r.ok, qPrintable(r.failure.turkish()));
            QCOMPARE(r.title, StartupSequence::clientTitle());
            QCOMPARE(adminPassword(*r.database).toLongLong(), 9);
        }
        // A client naming a database the server does not have is refused and nothing is made.
        const QString missing = url.left(url.lastIndexOf(u'/') + 1) + u"kx_no_such_station_db"_s;
        StationSettings s;
        QVERIFY(s.applyStartChoices(false, missing, { 1 }, 0).isEmpty());
        writeSettings(DataFolder(dir.filePath(u"client2"_s)), s);
        ScriptedStartupUi ui;
        QCOMPARE(runStart(ui, dir.filePath(u"client2"_s)).failure.turkish(),
                 u"Veritabanına bağlantı sağlanamadı."_s + ClosingSuffix);
        Database probe;
        QVERIFY(!probe.open(missing, Database::OpenMode::ExistingOnly));
    }
};

QTEST_GUILESS_MAIN(StartupSequenceTest)
#include "StartupSequenceTest.moc"
