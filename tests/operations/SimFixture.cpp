#include "SimFixture.h"

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

} // namespace

SimFixture::SimFixture(TestDatabases::Engine engine)
    : m_link(std::make_unique<HookedTransport>(m_sendHook))
    , m_now(QDate(2016, 1, 31), QTime(9, 5, 3))
{
    m_settings.marker = StationSettings::SetUpMarker;
    m_settings.workingMode = StationSettings::Server;
    m_roster.setStationSettings(m_settings);
    m_session.logInAsAdministrator(u"admin"_s);
    PanelLink::Settings linkSettings;
    linkSettings.pacingMs = 0;
    linkSettings.reconnectPauseMs = 0;
    m_link.setSettings(linkSettings);
    m_context.reset(new OperationContext{ m_db, m_link, m_op, m_session, m_settings, m_roster, [this] { return m_now; },
                                          UdpSettings() });
    m_context->udp.broadcastAddress = u"127.0.0.1"_s;
    m_context->udp.statusLocalPort = 0;
    m_context->udp.searchLocalPort = 0;
    if (!TestDatabases::available(engine)) {
        m_error = TestDatabases::skipReason();
        return;
    }
    if (!m_databases.openFresh(engine, m_db, true, &m_error))
        return;
    SimulatorHost::Options options;
    options.statusPort = 0;
    options.searchPort = 0;
    if (!m_sim.start(options, &m_error))
        return;
    m_context->udp.statusPanelPort = m_sim.statusPort();
    m_context->udp.searchPanelPort = m_sim.searchPort();
    m_ready = true;
}

SimFixture::~SimFixture()
{
    m_link.DisconnectPanel();
    m_sim.stop();
    m_db.close();
}

SimPanel* SimFixture::addPanel(int number, int serial)
{
    SimPanelConfig config;
    config.number = number;
    config.serial = serial ? serial : 0x1000 + number;
    SimPanel* panel = m_sim.addPanel(config, &m_error);
    if (panel)
        addRow(number, config.serial, u"127.0.0.1"_s, panel->port());
    return panel;
}

void SimFixture::addRow(int number, int serial, const QString& ip, int port)
{
    const QStringList octets = ip.split(u'.');
    ++m_rows;
    QString error;
    const bool stored
        = m_db.insert(u"PanelSettings"_s,
                      { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel Adi"_s, u"Panel IP1"_s, u"Panel IP2"_s,
                        u"Panel IP3"_s, u"Panel IP4"_s, u"Panel TCP Port"_s },
                      { m_rows, number, serial, QString(u"Panel "_s + QString::number(number)), octets.value(0).toInt(),
                        octets.value(1).toInt(), octets.value(2).toInt(), octets.value(3).toInt(), port },
                      &error);
    if (!stored)
        qWarning("PanelSettings row not stored: %s", qPrintable(error));
    reloadRoster();
}

quint16 SimFixture::deadPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

void SimFixture::reloadRoster()
{
    QString error;
    if (!m_roster.load(m_db, &error))
        qWarning("roster not loaded: %s", qPrintable(error));
    m_roster.select(1);
}

qint64 SimFixture::addUser(qint32 id, qint64 card, qint32 group)
{
    qint64 recordNo = 0;
    m_db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s, u"Grup No"_s, u"Sifre"_s },
                { id, card, QString(u"Ad"_s + QString::number(id)), u"Soyad"_s, group, 1234 }, nullptr, &recordNo,
                u"Kayit No"_s);
    return recordNo;
}

void SimFixture::addGroup(qint32 number, const QString& name, qint32 passageLimit)
{
    m_db.insert(u"GroupsMaster"_s, { u"Grup No"_s, u"Grup Adi"_s, u"Grup Gecis Sayisi"_s },
                { number, name, passageLimit });
}

int SimFixture::userCount()
{
    return m_db.scalar(u"SELECT COUNT(*) FROM \"Users\""_s).toInt();
}

void SimFixture::makeClient(const QList<int>& watched)
{
    m_settings.workingMode = StationSettings::Client;
    for (int n = 1; n <= StationSettings::PanelCount; ++n)
        m_settings.setWatched(n, watched.contains(n));
    m_roster.setStationSettings(m_settings);
}
