#include "support/StationFixture.h"

#include "protocol/TcpPanelTransport.h"

#include <QTcpServer>

using namespace Qt::StringLiterals;

namespace {

// TCP, with a look at every request on its way out.
class HookedTransport : public TcpPanelTransport
{
public:
    explicit HookedTransport(const std::function<void(const QByteArray&)>& hook)
        : m_hook(hook)
    { }
    bool send(const QByteArray& bytes) override
    {
        if (m_hook)
            m_hook(bytes);
        return TcpPanelTransport::send(bytes);
    }

private:
    const std::function<void(const QByteArray&)>& m_hook;
};

PanelLink::Settings unpaced()
{
    PanelLink::Settings settings;
    settings.pacingMs = 0;
    settings.reconnectPauseMs = 0;
    return settings;
}

} // namespace

StationFixture::StationFixture(TestDatabases::Engine engine)
    : m_db(std::make_shared<Database>())
    , m_link(std::make_unique<HookedTransport>(m_sendHook))
    , m_clock(QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)))
{
    m_link.setSettings(unpaced());
    const bool available = TestDatabases::available(engine);
    if (!available)
        m_error = TestDatabases::skipReason();
    const bool opened = available && m_databases.openFresh(engine, *m_db, true, &m_error);

    StartupResult start;
    start.ok = opened;
    start.settings.marker = StationSettings::SetUpMarker;
    start.settings.workingMode = StationSettings::Server;
    start.folder = DataFolder(m_databases.tempPath() + u"/data"_s);
    if (!start.folder.ensureExists(&m_error))
        qWarning("data folder not made: %s", qPrintable(m_error));
    start.database = m_db;
    start.title = StartupSequence::serverTitle();
    m_station = std::make_unique<Station>(start, m_clock);
    Station::Network& network = m_station->network();
    network.link = unpaced();
    network.udp.broadcastAddress = u"127.0.0.1"_s;
    network.udp.statusLocalPort = 0;
    network.udp.searchLocalPort = 0;
    network.live.listenAddress = QHostAddress(QHostAddress::LocalHost);
    m_station->session().logInAsAdministrator(u"admin"_s);
    m_context = std::make_unique<OperationContext>(m_station->operationContext(*m_db, m_link, m_op));
    if (!opened)
        return;

    SimulatorHost::Options options;
    options.statusPort = 0;
    options.searchPort = 0;
    if (!m_sim.start(options, &m_error))
        return;
    network.udp.statusPanelPort = m_sim.statusPort();
    network.udp.searchPanelPort = m_sim.searchPort();
    m_context->udp = network.udp;
    m_ready = true;
}

StationFixture::~StationFixture()
{
    m_context.reset();
    // The live monitor and the worker stop before the panels and the database go.
    m_station->stop();
    m_link.DisconnectPanel();
    m_sim.stop();
    m_station.reset();
    m_db->close();
}

void StationFixture::listenOnFreePort()
{
    Station::Network& network = m_station->network();
    network.livePortFromPanels = false;
    network.live.tcpPort = 0;
    network.live.udpPort = 0;
    network.live.batchIntervalMs = 10;
}

SimPanel* StationFixture::addPanel(int number, int serial)
{
    SimPanelConfig config;
    config.number = number;
    config.serial = serial ? serial : 0x1000 + number;
    SimPanel* panel = m_sim.addPanel(config, &m_error);
    if (panel)
        addRow(number, config.serial, u"127.0.0.1"_s, panel->port());
    return panel;
}

SimPanel* StationFixture::addPushingPanel(int number, int serial)
{
    SimPanel* panel = addPanel(number, serial);
    if (panel)
        panel->setPushTarget(u"127.0.0.1"_s, m_station->live().tcpPort());
    return panel;
}

void StationFixture::addRow(int number, int serial, const QString& ip, int port)
{
    const QStringList octets = ip.split(u'.');
    ++m_rows;
    QString error;
    const bool stored = m_db->insert(u"PanelSettings"_s,
                                     { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel Adi"_s, u"Panel IP1"_s,
                                       u"Panel IP2"_s, u"Panel IP3"_s, u"Panel IP4"_s, u"Panel TCP Port"_s },
                                     { m_rows, number, serial, QString(u"Panel "_s + QString::number(number)),
                                       octets.value(0).toInt(), octets.value(1).toInt(), octets.value(2).toInt(),
                                       octets.value(3).toInt(), port },
                                     &error);
    if (!stored)
        qWarning("PanelSettings row not stored: %s", qPrintable(error));
    reloadRoster();
}

quint16 StationFixture::deadPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

void StationFixture::reloadRoster()
{
    QString error;
    if (!roster().load(*m_db, &error))
        qWarning("roster not loaded: %s", qPrintable(error));
    roster().select(1);
}

qint64 StationFixture::addUser(qint32 id, qint64 card, qint32 group)
{
    qint64 recordNo = 0;
    m_db->insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, u"Grup No"_s, u"Sifre"_s },
                 { id, card, QString(u"Ad"_s + QString::number(id)), u"Soyad"_s, group, 1234 }, nullptr, &recordNo,
                 u"Kayit No"_s);
    return recordNo;
}

void StationFixture::addGroup(qint32 number, const QString& name, qint32 passageLimit)
{
    m_db->insert(u"GroupsMaster"_s, { u"Grup No"_s, u"Grup Adi"_s, u"Grup Gecis Sayisi"_s },
                 { number, name, passageLimit });
}

int StationFixture::userCount()
{
    return m_db->scalar(u"SELECT COUNT(*) FROM \"Users\""_s).toInt();
}

int StationFixture::storedPassages()
{
    return m_db->scalar(u"SELECT count(*) FROM \"AccessDatas\""_s).toInt();
}

void StationFixture::makeClient(const QList<int>& watched)
{
    StationSettings& settings = m_station->settings();
    settings.workingMode = StationSettings::Client;
    for (int n = 1; n <= StationSettings::PanelCount; ++n)
        settings.setWatched(n, watched.contains(n));
    roster().setStationSettings(settings);
}
