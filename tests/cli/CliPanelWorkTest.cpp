// kx410ctl driving simulated panels on loopback: what reaches the panels, how a failing panel is
// handled with --yes and with --no, exit statuses and the station's messages.

#include "CliRunner.h"
#include "protocol/PanelSettingsFrame.h"
#include "sim/SimFault.h"
#include "sim/SimPanel.h"
#include "sim/SimulatorHost.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
QStringList yes(const QStringList& args)
{
    return QStringList{ u"--yes"_s } + args;
}

// The erase is judged by its echoed code alone, so a panel that hangs up is its failure.
SimFault hangingUp(const QByteArray& code)
{
    SimFault fault;
    fault.mode = SimFault::Mode::Drop;
    fault.codes = { code };
    return fault;
}

int userCount(SimPanel* panel)
{
    int count = 0;
    panel->inspect([&count](const SimPanelState& s) { count = static_cast<int>(s.users.size()); });
    return count;
}
} // namespace

class CliPanelWorkTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void usersSendReachesThePanels();
    void failingPanelStopsWithNoAndGoesOnWithYes();
    void usersReceiveAndDelete();
    void doorsAndCounters();
    void searchReplacesTheListAndStatusShowsDoors();
    void panelSettingsClockCounterAndReaders();
    void parallelSendReportsTheDeadPanelAndTheDryRunShowsWhatEachHolds();

private:
    // A simulated panel and its row in the station's panel list.
    SimPanel* addPanel(int number);
    QString addUsersToDatabase(const QList<int>& ids);

    std::unique_ptr<CliRunner> m_cli;
    std::unique_ptr<SimulatorHost> m_sim;
};

void CliPanelWorkTest::init()
{
    m_cli = std::make_unique<CliRunner>();
    QVERIFY(m_cli->setUpServer());
    m_sim = std::make_unique<SimulatorHost>();
    SimulatorHost::Options options;
    options.statusPort = 0;
    options.searchPort = 0;
    QString error;
    QVERIFY2(m_sim->start(options, &error), qPrintable(error));
}

void CliPanelWorkTest::cleanup()
{
    m_sim.reset();
    m_cli.reset();
}

SimPanel* CliPanelWorkTest::addPanel(int number)
{
    SimPanelConfig config;
    config.number = number;
    config.serial = 0x2000 + number;
    SimPanel* panel = m_sim->addPanel(config);
    if (!panel)
        return nullptr;
    const CliRunner::Result r = m_cli->runAsAdmin(
        { u"panels"_s, u"add"_s, u"--number"_s, QString::number(number), u"--ip"_s, u"127.0.0.1"_s, u"--port"_s,
          QString::number(panel->port()), u"--serial"_s, QString::number(config.serial, 16) });
    return r.exitCode == 0 ? panel : nullptr;
}

QString CliPanelWorkTest::addUsersToDatabase(const QList<int>& ids)
{
    QString text;
    for (int id : ids)
        text += QString::number(id) + u';' + QString::number(500000 + id) + u";Ad"_s + QString::number(id)
            + u";Soyad;1\n"_s;
    const CliRunner::Result r
        = m_cli->runAsAdmin({ u"users"_s, u"import-csv"_s, m_cli->writeFile(u"users.csv"_s, text) });
    return r.exitCode == 0 ? QString() : r.all();
}

void CliPanelWorkTest::usersSendReachesThePanels()
{
    SimPanel* p1 = addPanel(1);
    SimPanel* p2 = addPanel(2);
    QVERIFY(p1 && p2);
    QCOMPARE(addUsersToDatabase({ 1, 2, 3 }), QString());

    // A question without --yes or --no: nothing is sent and the hint names the flags.
    CliRunner::Result r = m_cli->runAsAdmin({ u"users"_s, u"send"_s, u"--all-panels"_s });
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"Kullanıcı listesini göndermek istiyor musunuz?"_s), qPrintable(r.err));
    QVERIFY(r.err.contains(u"--yes"_s) && r.err.contains(u"--no"_s));
    QCOMPARE(p1->requestCount("NC"), 0);
    // Answered No: nothing sent either, and the status says so.
    QCOMPARE(m_cli->runAsAdmin({ u"--no"_s, u"users"_s, u"send"_s, u"--all-panels"_s }).exitCode, 5);
    // Yes without rights: refused before the question is put, in the run's language.
    r = m_cli->run(yes({ u"users"_s, u"send"_s, u"--all-panels"_s }));
    QCOMPARE(r.exitCode, 4);
    QVERIFY(r.err.contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s));
    QVERIFY2(r.err.contains(u"Yönetici şifresi gerekli: --admin-password N"_s), qPrintable(r.err));
    QVERIFY2(!r.err.contains(u"Kullanıcı listesini göndermek istiyor musunuz?"_s), qPrintable(r.err));
    QCOMPARE(p1->requestCount("NC"), 0);

    r = m_cli->runAsAdmin(yes({ u"users"_s, u"send"_s, u"--all-panels"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    for (SimPanel* panel : { p1, p2 }) {
        QCOMPARE(userCount(panel), 3);
        QCOMPARE(panel->user(2)->card, 500002);
        panel->inspect([](const SimPanelState& s) { QCOMPARE(s.announcedUserCount, 3); });
    }

    // One user to one panel; the count sent is still the highest ID in the table.
    p2->modify([](SimPanelState& s) { s.clearUsers(); });
    r = m_cli->runAsAdmin(yes({ u"users"_s, u"send"_s, u"--panel"_s, u"2"_s, u"--user"_s, u"2"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(userCount(p2), 1);
    QVERIFY(p2->user(2).has_value());

    // A range the panels cannot hold is refused before any panel is touched.
    const int before = p1->totalRequests();
    r = m_cli->runAsAdmin(yes({ u"users"_s, u"send"_s, u"--all-panels"_s, u"--first"_s, u"3"_s, u"--last"_s, u"2"_s }));
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"İlk ID veya Son ID değerleri hatalı!"_s) || r.out.contains(u"İlk ID"_s),
             qPrintable(r.all()));
    QCOMPARE(p1->totalRequests(), before);

    // Messages follow the chosen language: the answers, the notes, the counts and the progress
    // lines, which name the panel being served.
    r = m_cli->runAsAdmin({ u"--lang"_s, u"en"_s, u"--yes"_s, u"users"_s, u"send"_s, u"--all-panels"_s });
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.out.contains(u"All operations have been completed!\nPanel 1: 3 user(s) sent\nPanel 2: 3 user(s) sent"_s),
             qPrintable(r.out));
    QVERIFY2(r.err.contains(u" -> Yes\n"_s) && r.err.contains(u"\nPanel 2: 3/3\n"_s), qPrintable(r.err));
    for (const QString& turkish : { u"Evet"_s, u"Kullanıcı"_s, u"gönder"_s })
        QVERIFY2(!r.all().contains(turkish), qPrintable(r.all()));
    r = m_cli->runAsAdmin({ u"--lang"_s, u"en"_s, u"users"_s, u"send"_s, u"--all-panels"_s });
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"This command asks a question: pass --yes"_s), qPrintable(r.err));
    QVERIFY2(!r.err.contains(u"Bu komut"_s), qPrintable(r.err));
}

void CliPanelWorkTest::failingPanelStopsWithNoAndGoesOnWithYes()
{
    QList<SimPanel*> panels;
    for (int n = 1; n <= 3; ++n)
        panels << addPanel(n);
    QVERIFY(!panels.contains(nullptr));
    const auto refill = [&panels] {
        for (SimPanel* panel : panels) {
            SimUser user;
            user.id = 9;
            user.card = 99;
            panel->putUser(user);
            panel->resetRequestCounts();
        }
    };
    panels[1]->setFault(hangingUp("EC"));
    const QStringList erase = { u"users"_s, u"erase"_s, u"--all-panels"_s };

    // Confirmed, then No to the failure question: the walk stops at panel 2.
    refill();
    CliRunner::Result r = m_cli->runAsAdmin(QStringList{ u"--answers"_s, u"yes"_s, u"--no"_s } + erase);
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QCOMPARE(userCount(panels[0]), 0);
    QCOMPARE(userCount(panels[1]), 1);
    QCOMPARE(userCount(panels[2]), 1);
    QCOMPARE(panels[2]->requestCount("EC"), 0);

    // Yes to everything: panel 3 is erased too; the failure still makes the exit status 1.
    refill();
    r = m_cli->runAsAdmin(yes(erase));
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QCOMPARE(userCount(panels[2]), 0);
    QCOMPARE(userCount(panels[1]), 1);

    // Only --no: the confirmation itself is declined and no panel is touched.
    refill();
    QCOMPARE(m_cli->runAsAdmin(QStringList{ u"--no"_s } + erase).exitCode, 5);
    for (SimPanel* panel : panels)
        QCOMPARE(panel->totalRequests(), 0);

    // A single panel that fails: status 1.
    QCOMPARE(m_cli->runAsAdmin(yes({ u"users"_s, u"erase"_s, u"--panel"_s, u"2"_s })).exitCode, 1);
}

void CliPanelWorkTest::usersReceiveAndDelete()
{
    SimPanel* p1 = addPanel(1);
    QVERIFY(p1);
    for (int id : { 10, 11 }) {
        SimUser user;
        user.id = id;
        user.card = 770000 + id;
        user.group = 4;
        p1->putUser(user);
    }
    CliRunner::Result r = m_cli->runAsAdmin(
        yes({ u"users"_s, u"receive"_s, u"--panel"_s, u"1"_s, u"--first"_s, u"10"_s, u"--last"_s, u"11"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run({ u"users"_s, u"list"_s });
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].startsWith(u"10 "_s) && lines[1].contains(u"770010"_s));
    QVERIFY(lines[2].startsWith(u"11 "_s) && lines[2].contains(u"770011"_s));

    // Deleting from the panel leaves the database row.
    r = m_cli->runAsAdmin(yes({ u"users"_s, u"delete"_s, u"--user"_s, u"10"_s, u"--panel"_s, u"1"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(!p1->user(10).has_value());
    QVERIFY(p1->user(11).has_value());
    QVERIFY(m_cli->run({ u"users"_s, u"list"_s }).out.contains(u"770010"_s));
    QCOMPARE(m_cli->runAsAdmin(yes({ u"users"_s, u"delete"_s, u"--user"_s, u"99"_s, u"--panel"_s, u"1"_s })).exitCode,
             1);

    // What was asked did not fully happen: a user the panel answered with noise for (the
    // question to go on answered yes), a pull asked to erase whose panel kept its memory.
    SimFault noise;
    noise.mode = SimFault::Mode::Garbage;
    noise.codes = { "UC" };
    p1->setFault(noise);
    r = m_cli->runAsAdmin(
        yes({ u"users"_s, u"receive"_s, u"--panel"_s, u"1"_s, u"--first"_s, u"11"_s, u"--last"_s, u"11"_s }));
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    p1->setFault(SimFault());
    p1->presentCard(1, 770011);
    p1->setFault(hangingUp("EM"));
    r = m_cli->runAsAdmin(yes({ u"records"_s, u"pull"_s, u"--panel"_s, u"1"_s, u"--erase"_s }));
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"added=1"_s) && r.out.contains(u"erased=0"_s), qPrintable(r.out));
    p1->setFault(SimFault());
    r = m_cli->runAsAdmin(yes({ u"records"_s, u"pull"_s, u"--panel"_s, u"1"_s, u"--erase"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"added=0"_s) && r.out.contains(u"erased=1"_s), qPrintable(r.out));
}

void CliPanelWorkTest::doorsAndCounters()
{
    SimPanel* p1 = addPanel(1);
    SimPanel* p2 = addPanel(2);
    QVERIFY(p1 && p2);
    QCOMPARE(addUsersToDatabase({ 4 }), QString());
    p1->seedRecords(5);

    CliRunner::Result r = m_cli->run(yes({ u"counters"_s, u"record-count"_s, u"--panel"_s, u"1"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"5"_s);
    QCOMPARE(m_cli->run({ u"counters"_s, u"record-count"_s, u"--all-panels"_s }).exitCode, 2);

    r = m_cli->runAsAdmin(yes({ u"counters"_s, u"erase-records"_s, u"--panel"_s, u"1"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p1->recordCount(), 0);

    r = m_cli->runAsAdmin(yes({ u"apb"_s, u"reset-all"_s, u"--all-panels"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p1->requestCount("PA"), 1);
    QCOMPARE(p2->requestCount("PA"), 1);
    r = m_cli->runAsAdmin(yes({ u"apb"_s, u"reset-user"_s, u"--user"_s, u"4"_s, u"--panel"_s, u"2"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p2->requestCount("SA"), 1);
    QCOMPARE(p1->requestCount("SA"), 0);

    r = m_cli->runAsAdmin(yes({ u"counters"_s, u"erase-all"_s, u"--all-panels"_s }));
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(p2->requestCount("ES"), 1);
    r = m_cli->run(yes({ u"counters"_s, u"inside"_s, u"--panel"_s, u"1"_s, u"--group"_s, u"1"_s }));
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.contains(u"Geçiş grup listesi boş!"_s));
    QCOMPARE(m_cli->runAsAdmin({ u"groups"_s, u"add"_s, u"Giriş"_s, u"--number"_s, u"1"_s }).exitCode, 0);
    r = m_cli->run(yes({ u"counters"_s, u"inside"_s, u"--panel"_s, u"1"_s, u"--group"_s, u"1"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"'Giriş' grubuna ait içerdeki kullanıcı sayısı: 0"_s), qPrintable(r.out));
    QCOMPARE(p1->requestCount("MR"), 1);

    // Doors: held open on both panels, then a choice with nothing to drive.
    r = m_cli->runAsAdmin(yes({ u"door"_s, u"open"_s, u"--all-panels"_s, u"--doors"_s, u"1,3"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    for (SimPanel* panel : { p1, p2 }) {
        panel->inspect([](const SimPanelState& s) {
            QCOMPARE(s.doorStates[0], 2);
            QCOMPARE(s.doorStates[1], 0);
            QCOMPARE(s.doorStates[2], 2);
        });
    }
    QCOMPARE(m_cli->runAsAdmin(yes({ u"door"_s, u"close"_s, u"--panel"_s, u"1"_s })).exitCode, 1);
    QCOMPARE(m_cli->run(yes({ u"door"_s, u"trigger"_s, u"--panel"_s, u"1"_s, u"--doors"_s, u"5"_s })).exitCode, 2);
    r = m_cli->run(yes({ u"door"_s, u"trigger"_s, u"--panel"_s, u"1"_s, u"--doors"_s, u"2"_s }));
    QCOMPARE(r.exitCode, 4);

    // A passage granted by hand drives the panel.
    const int before = p1->totalRequests();
    r = m_cli->run(yes({ u"door"_s, u"manual"_s, u"--panel"_s, u"1"_s, u"--door"_s, u"2"_s, u"--user"_s, u"4"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(p1->totalRequests() > before);
}

void CliPanelWorkTest::searchReplacesTheListAndStatusShowsDoors()
{
    SimPanel* p1 = addPanel(1);
    QVERIFY(p1);
    SimPanelConfig config;
    config.number = 7;
    config.serial = 0x7A7A;
    QVERIFY(m_sim->addPanel(config));
    const QString searchPort = QString::number(m_sim->searchPort());
    const QStringList search = { u"panels"_s,        u"search"_s, u"--seconds"_s,    u"1"_s,
                                 u"--search-port"_s, searchPort,  u"--local-port"_s, u"0"_s };

    // Declined: the list stays as it was.
    QCOMPARE(m_cli->runAsAdmin(QStringList{ u"--no"_s } + search).exitCode, 5);
    QVERIFY(!m_cli->run({ u"panels"_s, u"list"_s }).out.contains(u"7A7A"_s));

    CliRunner::Result r = m_cli->runAsAdmin(QStringList{ u"--yes"_s } + search);
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run({ u"panels"_s, u"list"_s });
    QVERIFY2(r.out.contains(u"7A7A"_s) && r.out.contains(u"2001"_s), qPrintable(r.out));

    // The door status of every usable panel, by datagram to the simulator's status port.
    p1->modify([](SimPanelState& s) { s.doorStates[1] = 1; });
    r = m_cli->run({ u"panels"_s, u"status"_s, u"--wait"_s, u"500"_s, u"--status-port"_s,
                     QString::number(m_sim->statusPort()), u"--local-port"_s, u"0"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[1].startsWith(u"1 "_s) && lines[1].contains(u"closed   open     closed"_s), qPrintable(lines[1]));
    QVERIFY2(lines[2].startsWith(u"7 "_s) && lines[2].contains(u"online"_s), qPrintable(lines[2]));
}

void CliPanelWorkTest::panelSettingsClockCounterAndReaders()
{
    SimPanel* p3 = addPanel(3);
    QVERIFY(p3);
    const QStringList panel3 = { u"--panel"_s, u"3"_s };
    const auto settings = [&](const QString& action, const QStringList& more = {}) {
        return QStringList{ u"panels"_s, u"settings"_s, action } + panel3 + more;
    };
    CliRunner::Result r = m_cli->run(settings(u"show"_s));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"\nserial 2003\n"_s) && r.out.contains(u"door 4:"_s), qPrintable(r.out));

    // The save's question, its refusals and its silent corrections.
    const QStringList change
        = { u"--name"_s, u"Kapi Paneli"_s, u"--relay-times"_s, u"45,5,30,0"_s, u"--capacity"_s,  u"0"_s,
            u"--door"_s, u"2"_s,           u"--direction"_s,   u"0"_s,         u"--door-name"_s, u"Bariyer"_s };
    QCOMPARE(m_cli->runAsAdmin(settings(u"set"_s, change)).exitCode, 4);
    QCOMPARE(m_cli->runAsAdmin(yes(settings(u"set"_s, { u"--serial"_s, u"12345"_s }))).exitCode, 1);
    QCOMPARE(m_cli->runAsAdmin(yes(settings(u"set"_s, { u"--door"_s, u"1"_s, u"--reader-model"_s, u"1"_s }))).exitCode,
             2);
    r = m_cli->runAsAdmin(yes(settings(u"set"_s, change)));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run(settings(u"show"_s));
    QVERIFY2(r.out.contains(u"\nrelay-times 1,5,30,1\n"_s) && r.out.contains(u"\ncapacity 9999\n"_s)
                 && r.out.contains(u"door-name=Bariyer"_s),
             qPrintable(r.out));

    // Sent by TCP: the panel keeps the record as stored.
    r = m_cli->runAsAdmin(yes(settings(u"send"_s, { u"--model"_s, u"1"_s })));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QByteArray record;
    p3->inspect([&](const SimPanelState& s) { record = s.settings.record; });
    QCOMPARE(record.mid(58, 16), QByteArray("Kapi Paneli     "));
    QCOMPARE(record.mid(74, 2), QByteArray("01"));
    // The UHF model raised the repeated-access block to the whole panel, 1 second.
    QCOMPARE(record.mid(100, 1) + record.mid(102, 3), QByteArray("2001"));
    // And by broadcast, without a link.
    r = m_cli->runAsAdmin(yes(settings(u"send"_s,
                                       { u"--udp"_s, u"--search-port"_s, QString::number(m_sim->searchPort()),
                                         u"--local-port"_s, u"0"_s, u"--name"_s, u"UDP"_s })));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QTRY_COMPARE(p3->requestCount("DS"), 2);

    // Clocks: the offset is kept and listed.
    p3->modify([](SimPanelState& s) { s.setClock(QDateTime::currentDateTime().addSecs(-600)); });
    r = m_cli->run({ u"panels"_s, u"clock"_s, u"read"_s, u"--all-panels"_s });
    QVERIFY2(r.exitCode == 0 && r.out.contains(u"panel 3: "_s), qPrintable(r.all()));
    QVERIFY2(r.out.contains(u" offset -6"_s), qPrintable(r.out));
    QVERIFY(m_cli->run({ u"panels"_s, u"list"_s }).out.contains(u" -6"_s));
    r = m_cli->run(yes({ u"panels"_s, u"clock"_s, u"set"_s, u"--all-panels"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p3->requestCount("DR"), 1);

    // The zone counter, below the capacity.
    const QStringList counter = { u"panels"_s, u"counter"_s };
    QCOMPARE(m_cli
                 ->runAsAdmin(yes(counter + QStringList{ u"set"_s } + panel3
                                  + QStringList{ u"--zone"_s, u"2"_s, u"--value"_s, u"9999"_s }))
                 .exitCode,
             1);
    r = m_cli->runAsAdmin(
        yes(counter + QStringList{ u"set"_s } + panel3 + QStringList{ u"--zone"_s, u"2"_s, u"--value"_s, u"42"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run(counter + QStringList{ u"read"_s } + panel3 + QStringList{ u"--zone"_s, u"2"_s });
    QCOMPARE(r.out.trimmed(), u"42"_s);
    QCOMPARE(m_cli->run(counter + QStringList{ u"read"_s } + panel3 + QStringList{ u"--zone"_s, u"3"_s }).exitCode, 2);

    // UHF readers.
    const QStringList reader = QStringList{ u"panels"_s, u"reader"_s };
    r = m_cli->runAsAdmin(
        yes(reader + QStringList{ u"power"_s } + panel3 + QStringList{ u"--reader"_s, u"2"_s, u"--set"_s, u"25"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(
        m_cli->run(reader + QStringList{ u"power"_s } + panel3 + QStringList{ u"--reader"_s, u"2"_s }).out.trimmed(),
        u"25 dBm"_s);
    r = m_cli->runAsAdmin(yes(reader + QStringList{ u"led"_s } + panel3
                              + QStringList{ u"--reader"_s, u"2"_s, u"--buzzer"_s, u"0"_s, u"--led"_s, u"1"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(m_cli->run(reader + QStringList{ u"led"_s } + panel3 + QStringList{ u"--reader"_s, u"2"_s }).out.trimmed(),
             u"buzzer 0 led 1"_s);

    r = m_cli->runAsAdmin(yes({ u"panels"_s, u"remove"_s, u"--panel"_s, u"3"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(m_cli->run(settings(u"show"_s)).exitCode, 1);
}

void CliPanelWorkTest::parallelSendReportsTheDeadPanelAndTheDryRunShowsWhatEachHolds()
{
    QList<SimPanel*> panels;
    for (int n = 1; n <= 3; ++n)
        panels << addPanel(n);
    QCOMPARE(addUsersToDatabase({ 1, 2, 3, 4 }), QString());
    // Panel 2 hangs up on every request: given up after one, the others are served.
    SimFault dead;
    dead.mode = SimFault::Mode::Drop;
    panels.at(1)->setFault(dead);
    CliRunner::Result r = m_cli->runAsAdmin(
        yes({ u"users"_s, u"send"_s, u"--all-panels"_s, u"--parallel"_s, u"3"_s, u"--give-up-after"_s, u"1"_s }));
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"2 nolu panel cevap vermiyor, bir sonraki çalışmaya bırakıldı."_s), qPrintable(r.all()));
    QCOMPARE(userCount(panels.at(0)), 4);
    QCOMPARE(userCount(panels.at(2)), 4);
    QCOMPARE(panels.at(1)->requestCount("MU"), 0);
    // The progress counts users over all panels, the one given up included, not panels.
    QVERIFY2(r.err.contains(u"12/12"_s) && !r.err.contains(u"3/3"_s), qPrintable(r.err));
    panels.at(1)->setFault(SimFault());

    // Without connecting: panel 2 still needs everyone, the others nothing but the edit.
    QVERIFY(m_cli->runAsAdmin(yes({ u"users"_s, u"remove"_s, u"--user"_s, u"4"_s })).exitCode == 0);
    const int before = panels.at(0)->totalRequests();
    r = m_cli->runAsAdmin({ u"users"_s, u"send"_s, u"--all-panels"_s, u"--changed"_s, u"--dry-run"_s });
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"panel 1: would send 0 users, delete 1;"_s), qPrintable(r.out));
    QVERIFY2(r.out.contains(u"panel 2: would send 3 users, delete 0; never sent"_s), qPrintable(r.out));
    QVERIFY(r.out.contains(u"1 removed (4)"_s));
    QCOMPARE(panels.at(0)->totalRequests(), before);
    r = m_cli->run({ u"panels"_s, u"list"_s });
    QVERIFY2(r.out.contains(u"no (data changed since the last send)"_s), qPrintable(r.out));

    r = m_cli->runAsAdmin(yes({ u"users"_s, u"send"_s, u"--all-panels"_s, u"--changed"_s }));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    for (SimPanel* panel : panels)
        QCOMPARE(userCount(panel), 3);
    QVERIFY(!m_cli->run({ u"panels"_s, u"list"_s }).out.contains(u"no (data changed"_s));
}

QTEST_GUILESS_MAIN(CliPanelWorkTest)
#include "CliPanelWorkTest.moc"
