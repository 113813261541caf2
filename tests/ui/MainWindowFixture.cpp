#include "MainWindowFixture.h"

#include "operations/station/Station.h"
#include "store/ConfigFile.h"
#include "store/OperatorAccounts.h"
#include "ui/main/frmMain.h"

using namespace Qt::StringLiterals;

MainWindowFixture::MainWindowFixture()
{
    m_start.folder = DataFolder(m_databases.tempPath() + u"/data"_s);
    if (!m_start.folder.ensureExists(&m_error))
        return;
    m_start.settings.marker = StationSettings::SetUpMarker;
    m_start.settings.workingMode = StationSettings::Server;
    if (!ConfigFile::write(m_start.folder.configFile(), m_start.settings, &m_error))
        return;
    m_start.database = std::make_shared<Database>();
    if (!m_databases.openFresh(TestDatabases::SQLite, *m_start.database, true, &m_error))
        return;
    OperatorAccounts accounts;
    if (!accounts.load(*m_start.database, &m_error))
        return;
    const OperatorAccounts::ChangeResult first
        = accounts.setFirstAdminPassword(*m_start.database, u"4321"_s, u"4321"_s);
    if (!first.ok) {
        m_error = first.message.turkish();
        return;
    }
    m_start.title = StartupSequence::serverTitle();
    m_start.ok = true;
    m_ok = true;
}

MainWindowFixture::~MainWindowFixture()
{
    m_window.reset();
    m_station.reset();
    if (m_start.database)
        m_start.database->close();
}

frmMain& MainWindowFixture::window()
{
    if (!m_window) {
        m_station = std::make_unique<Station>(m_start, m_clock);
        QString error;
        if (!m_station->load(&error))
            qWarning().noquote() << error;
        m_window = std::make_unique<frmMain>(*m_station);
    }
    return *m_window;
}
