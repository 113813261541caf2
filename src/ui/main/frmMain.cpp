#include "ui/main/frmMain.h"

#include "operations/station/Station.h"
#include "reports/ReportConnections.h"
#include "store/Clock.h"
#include "store/ConfigFile.h"
#include "store/Database.h"
#include "store/RightsCheck.h"
#include "store/Translator.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"
#include "ui/main/LanguageSwitch.h"
#include "ui/main/WindowOperator.h"
#include "ui/main/frmPassword.h"
#include "ui/main/frmSetPassword.h"
#include "ui/reports/ReportsMenu.h"
#include "ui/users/frmLookupTable.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

using namespace Qt::StringLiterals;

frmMain::frmMain(Station& station, QWidget* parent)
    : QMainWindow(parent)
    , m_station(station)
{
    setObjectName(u"frmMain"_s);
    setCaption(this, m_station.title());

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(u"tabMain"_s);
    setCentralWidget(m_tabs);

    buildStatusLine();
    m_operator = new WindowOperator(this, m_progressBar, m_statusLine, this);
    m_operator->setLoginHandler([this] { showLogin(); });
    buildMenus();
    markLanguage(m_station.settings().language);

    m_clockTimer = new QTimer(this);
    m_clockTimer->setObjectName(u"ClockTimer"_s);
    m_clockTimer->setInterval(1000);
    connect(m_clockTimer, &QTimer::timeout, this, &frmMain::clockTick);
    m_clockTimer->start();
    showTime();
    resize(1024, 720);
}

frmMain::~frmMain()
{
    // The station closes: the reports' connections kept for the next report go too.
    ReportConnections::closeAll();
}

StationSettings frmMain::settings() const
{
    return m_station.settings();
}

const DataFolder& frmMain::folder() const
{
    return m_station.folder();
}

Database& frmMain::database()
{
    return m_station.db();
}

OperatorSession& frmMain::session()
{
    return m_station.session();
}

OperatorAccounts& frmMain::accounts()
{
    return m_station.accounts();
}

const Clock& frmMain::clock() const
{
    return m_station.clock();
}

PageServices frmMain::pageServices()
{
    return PageServices::of(m_station, m_operator);
}

void frmMain::buildStatusLine()
{
    m_statusLine = new QLabel(this);
    m_statusLine->setObjectName(u"lblStatus"_s);
    m_progressBar = new QProgressBar(this);
    m_progressBar->setObjectName(u"PrBar"_s);
    m_progressBar->setMaximumWidth(240);
    m_progressBar->setVisible(false);
    m_operatorName = new QLabel(this);
    m_operatorName->setObjectName(u"lblOperator"_s);
    m_date = new QLabel(this);
    m_date->setObjectName(u"lblDate"_s);
    m_clock = new QLabel(this);
    m_clock->setObjectName(u"lblClock"_s);
    statusBar()->addWidget(m_statusLine, 1);
    statusBar()->addPermanentWidget(m_progressBar);
    statusBar()->addPermanentWidget(m_operatorName);
    statusBar()->addPermanentWidget(m_date);
    statusBar()->addPermanentWidget(m_clock);
}

void frmMain::buildMenus()
{
    auto addMenu = [this](const QString& name) {
        QMenu* menu = menuBar()->addMenu(QString());
        menu->setObjectName(name);
        return menu;
    };
    auto addEntry = [this](QMenu* menu, const QString& name) {
        QAction* action = menu->addAction(QString());
        action->setObjectName(name);
        return action;
    };

    QMenu* mnuFile = addMenu(u"mnuFile"_s);
    setCaption(mnuFile, u"Dosya"_s);
    QAction* mnuExit = addEntry(mnuFile, u"mnuExit"_s);
    setCaption(mnuExit, u"Çıkış"_s);
    connect(mnuExit, &QAction::triggered, this, &frmMain::exitStation);

    QMenu* mnuOperator = addMenu(u"mnuOperator"_s);
    setCaption(mnuOperator, u"Kullanıcı"_s);
    QAction* mnuLogin = addEntry(mnuOperator, u"mnuLogin"_s);
    setCaption(mnuLogin, u"Sisteme Giriş"_s);
    connect(mnuLogin, &QAction::triggered, this, [this] { showLogin(); });
    QAction* mnuAccounts = addEntry(mnuOperator, u"mnuUserAccounts"_s);
    setCaption(mnuAccounts, u"Kullanıcı Hesapları"_s);
    connect(mnuAccounts, &QAction::triggered, this, &frmMain::openAccounts);

    QMenu* mnuDefinitions = addMenu(u"mnuDefinitions"_s);
    setCaption(mnuDefinitions, u"Tanımlar"_s);
    const struct
    {
        const char16_t* name;
        LookupTable::Kind kind;
    } lookups[] = { { u"mnuCompanies", LookupTable::Kind::Companies },
                    { u"mnuDepartments", LookupTable::Kind::Departments },
                    { u"mnuBlocks", LookupTable::Kind::Blocks } };
    for (const auto& lookup : lookups) {
        QAction* entry = addEntry(mnuDefinitions, QString::fromUtf16(lookup.name));
        setCaption(entry, LookupTable(lookup.kind).formTitle());
        const LookupTable::Kind kind = lookup.kind;
        connect(entry, &QAction::triggered, this, [this, kind] { openLookupTable(kind); });
    }

    ReportsMenu::install(this, m_station.database().get()); // reports menu and its windows

    QMenu* mnuLanguage = addMenu(u"mnuLanguage"_s);
    setCaption(mnuLanguage, u"Dil"_s);
    auto* group = new QActionGroup(this);
    group->setExclusive(true);
    for (int language = 0; language < 3; ++language) {
        QAction* entry = addEntry(mnuLanguage, u"mnuChangeLanguage"_s + QString::number(language));
        entry->setCheckable(true);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, language] { changeLanguage(language); });
        m_languageEntries.append(entry);
    }
    // Each language by its own name, so that someone who reads only that one finds it.
    m_languageEntries.at(0)->setText(u"Türkçe"_s);
    m_languageEntries.at(1)->setText(u"English"_s);
    m_languageEntries.at(2)->setText(u"العربية"_s);
}

void frmMain::markLanguage(int language)
{
    for (int index = 0; index < m_languageEntries.size(); ++index)
        m_languageEntries.at(index)->setChecked(index == language);
}

void frmMain::changeLanguage(int language)
{
    if (language < 0 || language > 2)
        return;
    m_station.settings().language = static_cast<qint16>(language);
    QString error;
    // Only the language: the daily settings may have been changed since the start.
    const auto change = [language](StationSettings& settings) { settings.language = static_cast<qint16>(language); };
    if (!ConfigFile::update(m_station.folder().configFile(), change, nullptr, &error)) {
        qWarning().noquote() << m_station.folder().configFile() << error;
        MessageBox::warning(this, Message(u"Başlangıç ayarları kaydedilemedi."_s));
    }
    markLanguage(language);
    LanguageSwitch::apply(language);
}

bool frmMain::showLogin()
{
    // Another station may have changed the accounts since they were read.
    if (m_station.database())
        m_station.accounts().load(m_station.db());
    frmPassword dialog(m_station.accounts(), m_station.session(), m_station.session().userName(), this);
    dialog.exec();
    showTime();
    return m_station.session().isAdministrator();
}

bool frmMain::checkRights()
{
    return checkAdministratorRights(m_station.session(), *m_operator);
}

void frmMain::openAccounts()
{
    if (!m_station.database())
        return;
    m_station.accounts().load(m_station.db());
    frmSetPassword dialog(m_station.accounts(), m_station.db(), this);
    dialog.exec();
}

void frmMain::exitStation()
{
    // Passages pushed while the station is closed reach the database only by a later pull.
    if (m_station.live().isRunning()
        && MessageBox::question(this, Message(u"Canlı izleme çalışıyor. Programdan çıkmak istiyor musunuz?"_s))
            != QMessageBox::Yes)
        return;
    close();
}

void frmMain::openLookupTable(LookupTable::Kind kind)
{
    if (!m_station.database())
        return;
    for (const QPointer<frmLookupTable>& form : std::as_const(m_lookupForms)) {
        if (form && form->kind() == kind) {
            form->show();
            form->raise();
            form->activateWindow();
            return;
        }
    }
    auto* form = new frmLookupTable(kind, m_station.db(), m_station.session(), *m_operator, this);
    form->setAttribute(Qt::WA_DeleteOnClose);
    m_lookupForms.append(form);
    form->show();
}

void frmMain::clockTick()
{
    m_station.session().tick();
    showTime();
    Q_EMIT ticked();
}

void frmMain::showTime()
{
    const QDateTime now = m_station.clock().now();
    m_date->setText(now.toString(u"dd/MM/yyyy"_s));
    m_clock->setText(now.toString(u"HH:mm:ss"_s));
    QString who = m_station.session().userName();
    if (m_station.session().isAdministrator())
        who += u" *"_s;
    m_operatorName->setText(who);
}
