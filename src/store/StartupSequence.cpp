#include "store/StartupSequence.h"

#include "store/ConfigFile.h"
#include "store/Database.h"
#include "store/InstanceLock.h"
#include "store/LanguageDatabase.h"
#include "store/OperatorAccounts.h"
#include "store/Schema.h"
#include "store/StartupUi.h"
#include "store/Translate.h"
#include "store/Translator.h"

#include <QDebug>
#include <QSqlQuery>

namespace {

Message closing(const Message& reason)
{
    return Message(reason).newLine().add(QStringLiteral("Program kapatılacak!"));
}

Message closing(const QString& reason)
{
    return closing(Message(reason));
}

} // namespace

StartupSequence::StartupSequence(StartupUi& ui, const StartupOptions& options)
    : m_ui(ui)
    , m_options(options)
    , m_languageTable(LanguageDatabase::shippedTablePath())
{ }

QString StartupSequence::serverTitle()
{
    return QStringLiteral("Halvoran KX-410 Panel Konfigürasyon V2.1 - SERVER");
}

QString StartupSequence::clientTitle()
{
    return QStringLiteral("Halvoran KX-410 Panel Konfigürasyon V2.1 - CLIENT");
}

Message StartupSequence::fallbackToMainDatabaseMessage()
{
    return Message(QStringLiteral("Seçilen veritabanına bağlantı sağlanamadı, Ana veritabanı kullanılacak."));
}

bool StartupSequence::fail(StartupResult& result, const Message& message)
{
    result.ok = false;
    result.failure = message;
    result.database.reset();
    m_ui.showMessage(message);
    result.lock.reset();
    return false;
}

StartupResult StartupSequence::run()
{
    StartupResult result;
    result.folder = DataFolder(m_options.dataDir);
    const DataFolder& folder = result.folder;

    QString error;
    if (!folder.ensureExists(&error)) {
        qWarning().noquote() << error;
        fail(result, closing(Message(QStringLiteral("Veri klasörü oluşturulamadı.")).newLine().value(folder.root())));
        return result;
    }

    if (m_options.singleInstance) {
        result.lock = std::make_shared<InstanceLock>(folder.lockFile());
        if (!result.lock->tryLock()) {
            fail(result, InstanceLock::alreadyRunningMessage());
            return result;
        }
    }

    // A record that cannot be read whole counts as not set up: the dialog asks again.
    const ConfigFile::ReadResult read = ConfigFile::read(folder.configFile());
    if (!read.error.isEmpty())
        qWarning().noquote() << folder.configFile() << read.error;
    result.settings = read.settings;

    if (!result.settings.isSetUp()) {
        StationSettings chosen = result.settings;
        if (m_ui.askInitialSettings(chosen) && chosen.isSetUp()) {
            result.settings = chosen;
            if (!ConfigFile::write(folder.configFile(), result.settings, &error)) {
                qWarning().noquote() << error;
                m_ui.showMessage(Message(QStringLiteral("Başlangıç ayarları kaydedilemedi.")).newLine().value(error));
            }
        }
        if (!result.settings.isSetUp()) {
            fail(result, closing(QStringLiteral("Başlangıç ayarları yapılmadı.")));
            return result;
        }
    }

    Translator translator;
    translator.setLanguage(result.settings.language);
    if (!LanguageDatabase::ensureCurrent(folder.languageDatabase(), m_languageTable, &error)
        || !LanguageDatabase::load(folder.languageDatabase(), translator, &error)) {
        qWarning().noquote() << folder.languageDatabase() << error;
        fail(result, closing(QStringLiteral("Program dil seçenekleri veritabanına bağlantı sağlanamadı.")));
        return result;
    }
    SetCurrentTranslator(translator);

    const bool server = result.settings.isServer();
    if (!m_options.databaseOverride.trimmed().isEmpty())
        result.databaseLocation = m_options.databaseOverride.trimmed();
    else
        result.databaseLocation = server ? folder.mainDatabase() : result.settings.remotePath.trimmed();

    // Only a server makes its own database; a client works on one that exists already.
    auto db = std::make_shared<Database>();
    const Database::OpenMode mode = server ? Database::OpenMode::CreateIfMissing : Database::OpenMode::ExistingOnly;
    bool opened = db->open(result.databaseLocation, mode, &error);
    if (opened && !Schema::hasMainTables(*db)) {
        opened = server && Schema::createMain(*db, &error);
        if (!server)
            error = QStringLiteral("the database holds none of the station's tables");
    }
    if (!opened) {
        qWarning().noquote() << result.databaseLocation << error;
        fail(result, closing(QStringLiteral("Veritabanına bağlantı sağlanamadı.")));
        return result;
    }
    result.database = db;
    result.title = server ? serverTitle() : clientTitle();

    {
        QSqlQuery settingsRow = db->query(QStringLiteral("SELECT * FROM \"ProgInit\""), {}, &error);
        if (!settingsRow.isActive()) {
            qWarning().noquote() << error;
            fail(result, closing(QStringLiteral("Veritabanına hatası.")));
            return result;
        }
    }

    const Schema::UpgradeResult upgrade = Schema::upgrade(*db);
    for (const QString& skipped : upgrade.skipped)
        qWarning().noquote() << "upgrade step skipped:" << skipped;

    if (!ensureAdminPassword(*db, result))
        return result;

    result.ok = true;
    return result;
}

bool StartupSequence::ensureAdminPassword(Database& db, StartupResult& result)
{
    QString error;
    OperatorAccounts accounts;
    if (!accounts.load(db, &error)) {
        qWarning().noquote() << error;
        return fail(result, closing(QStringLiteral("Veritabanına hatası.")));
    }
    if (accounts.hasAdminPassword())
        return true;

    // A fresh database has no administrator yet: the operator chooses the password now.
    Message hint(QStringLiteral("Yönetici şifresini belirleyiniz"));
    for (;;) {
        QString password;
        QString repeated;
        if (!m_ui.chooseAdminPassword(hint, &password, &repeated))
            return fail(result, closing(QStringLiteral("Yönetici şifresi belirlenmedi.")));
        const OperatorAccounts::ChangeResult change = accounts.setFirstAdminPassword(db, password, repeated);
        if (change.ok) {
            m_ui.showMessage(change.message);
            return true;
        }
        hint = change.message;
    }
}
