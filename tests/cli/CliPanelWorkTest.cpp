// kx410ctl driving simulated panels on loopback: what reaches the panels, how a failing panel is
// handled with --yes and with --no, exit statuses and the station's messages.

#include "CliSimSite.h"
#include "sim/SimFault.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
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
    std::unique_ptr<CliSimSite> m_site;
};

void CliPanelWorkTest::init()
{
    m_cli = std::make_unique<CliRunner>();
    QVERIFY(m_cli->setUpServer());
    m_site = std::make_unique<CliSimSite>(*m_cli);
    QVERIFY2(m_site->isStarted(), qPrintable(m_site->error()));
}

void CliPanelWorkTest::cleanup()
{
    m_site.reset();
    m_cli.reset();
}

SimPanel* CliPanelWorkTest::addPanel(int number)
{
    return m_site->addPanel(number, 0x2000 + number);
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
    CliRunner::Result r = m_cli->runAsAdmin("users send --all-panels");
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"Kullanıcı listesini göndermek istiyor musunuz?"_s), qPrintable(r.err));
    QVERIFY(r.err.contains(u"--yes"_s) && r.err.contains(u"--no"_s));
    QCOMPARE(p1->requestCount("NC"), 0);
    // Answered No: nothing sent either, and the status says so.
    QCOMPARE(m_cli->runAsAdmin("--no users send --all-panels").exitCode, 5);
    // Yes without rights: refused before the question is put, in the run's language.
    r = m_cli->run("--yes users send --all-panels");
    QCOMPARE(r.exitCode, 4);
    QVERIFY(r.err.contains(u"Yetki hatası, Yönetici şifresi gerekli!"_s));
    QVERIFY2(r.err.contains(u"Yönetici şifresi gerekli: --admin-password N"_s), qPrintable(r.err));
    QVERIFY2(!r.err.contains(u"Kullanıcı listesini göndermek istiyor musunuz?"_s), qPrintable(r.err));
    QCOMPARE(p1->requestCount("NC"), 0);

    r = m_cli->runAsAdmin("--yes users send --all-panels");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    for (SimPanel* panel : { p1, p2 }) {
        QCOMPARE(userCount(panel), 3);
        QCOMPARE(panel->user(2)->card, 500002);
        panel->inspect([](const SimPanelState& s) { QCOMPARE(s.announcedUserCount, 3); });
    }

    // One user to one panel; the count sent is still the highest ID in the table.
    p2->modify([](SimPanelState& s) { s.clearUsers(); });
    r = m_cli->runAsAdmin("--yes users send --panel 2 --user 2");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(userCount(p2), 1);
    QVERIFY(p2->user(2).has_value());

    // A range the panels cannot hold is refused before any panel is touched.
    const int before = p1->totalRequests();
    r = m_cli->runAsAdmin("--yes users send --all-panels --first 3 --last 2");
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(p1->totalRequests(), before);

    // Messages follow the chosen language: the answers, the notes, the counts and the progress
    // lines, which name the panel being served.
    r = m_cli->runAsAdmin("--lang en --yes users send --all-panels");
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.out.contains(u"All operations have been completed!\nPanel 1: 3 user(s) sent\nPanel 2: 3 user(s) sent"_s),
             qPrintable(r.out));
    QVERIFY2(r.err.contains(u" -> Yes\n"_s) && r.err.contains(u"\nPanel 2: 3/3\n"_s), qPrintable(r.err));
    for (const QString& turkish : { u"Evet"_s, u"Kullanıcı"_s, u"gönder"_s })
        QVERIFY2(!r.all().contains(turkish), qPrintable(r.all()));
    r = m_cli->runAsAdmin("--lang en users send --all-panels");
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

    // Confirmed, then No to the failure question: the walk stops at panel 2.
    refill();
    CliRunner::Result r = m_cli->runAsAdmin("--answers yes --no users erase --all-panels");
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QCOMPARE(userCount(panels[0]), 0);
    QCOMPARE(userCount(panels[1]), 1);
    QCOMPARE(userCount(panels[2]), 1);
    QCOMPARE(panels[2]->requestCount("EC"), 0);

    // Yes to everything: panel 3 is erased too; the failure still makes the exit status 1.
    refill();
    r = m_cli->runAsAdmin("--yes users erase --all-panels");
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QCOMPARE(userCount(panels[2]), 0);
    QCOMPARE(userCount(panels[1]), 1);

    // Only --no: the confirmation itself is declined and no panel is touched.
    refill();
    QCOMPARE(m_cli->runAsAdmin("--no users erase --all-panels").exitCode, 5);
    for (SimPanel* panel : panels)
        QCOMPARE(panel->totalRequests(), 0);

    // A single panel that fails: status 1.
    QCOMPARE(m_cli->runAsAdmin("--yes users erase --panel 2").exitCode, 1);
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
    CliRunner::Result r = m_cli->runAsAdmin("--yes users receive --panel 1 --first 10 --last 11");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run("users list");
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].startsWith(u"10 "_s) && lines[1].contains(u"770010"_s));
    QVERIFY(lines[2].startsWith(u"11 "_s) && lines[2].contains(u"770011"_s));

    // Deleting from the panel leaves the database row.
    r = m_cli->runAsAdmin("--yes users delete --user 10 --panel 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(!p1->user(10).has_value());
    QVERIFY(p1->user(11).has_value());
    QVERIFY(m_cli->run("users list").out.contains(u"770010"_s));
    QCOMPARE(m_cli->runAsAdmin("--yes users delete --user 99 --panel 1").exitCode, 1);

    // What was asked did not fully happen: a user the panel answered with noise for (the
    // question to go on answered yes), a pull asked to erase whose panel kept its memory.
    SimFault noise;
    noise.mode = SimFault::Mode::Garbage;
    noise.codes = { "UC" };
    p1->setFault(noise);
    r = m_cli->runAsAdmin("--yes users receive --panel 1 --first 11 --last 11");
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    p1->setFault(SimFault());
    p1->presentCard(1, 770011);
    p1->setFault(hangingUp("EM"));
    r = m_cli->runAsAdmin("--yes records pull --panel 1 --erase");
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"added=1"_s) && r.out.contains(u"erased=0"_s), qPrintable(r.out));
    p1->setFault(SimFault());
    r = m_cli->runAsAdmin("--yes records pull --panel 1 --erase");
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

    CliRunner::Result r = m_cli->run("--yes counters record-count --panel 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(r.out.trimmed(), u"5"_s);
    QCOMPARE(m_cli->run("counters record-count --all-panels").exitCode, 2);

    r = m_cli->runAsAdmin("--yes counters erase-records --panel 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p1->recordCount(), 0);

    r = m_cli->runAsAdmin("--yes apb reset-all --all-panels");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p1->requestCount("PA"), 1);
    QCOMPARE(p2->requestCount("PA"), 1);
    r = m_cli->runAsAdmin("--yes apb reset-user --user 4 --panel 2");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p2->requestCount("SA"), 1);
    QCOMPARE(p1->requestCount("SA"), 0);

    r = m_cli->runAsAdmin("--yes counters erase-all --all-panels");
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(p2->requestCount("ES"), 1);
    r = m_cli->run("--yes counters inside --panel 1 --group 1");
    QCOMPARE(r.exitCode, 1);
    QCOMPARE(m_cli->runAsAdmin("groups add Giriş --number 1").exitCode, 0);
    r = m_cli->run("--yes counters inside --panel 1 --group 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"'Giriş' grubuna ait içerdeki kullanıcı sayısı: 0"_s), qPrintable(r.out));
    QCOMPARE(p1->requestCount("MR"), 1);

    // Doors: held open on both panels, then a choice with nothing to drive.
    r = m_cli->runAsAdmin("--yes door open --all-panels --doors 1,3");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    for (SimPanel* panel : { p1, p2 }) {
        panel->inspect([](const SimPanelState& s) {
            QCOMPARE(s.doorStates[0], 2);
            QCOMPARE(s.doorStates[1], 0);
            QCOMPARE(s.doorStates[2], 2);
        });
    }
    QCOMPARE(m_cli->runAsAdmin("--yes door close --panel 1").exitCode, 1);
    QCOMPARE(m_cli->run("--yes door trigger --panel 1 --doors 5").exitCode, 2);
    r = m_cli->run("--yes door trigger --panel 1 --doors 2");
    QCOMPARE(r.exitCode, 4);

    // A passage granted by hand drives the panel.
    const int before = p1->totalRequests();
    r = m_cli->run("--yes door manual --panel 1 --door 2 --user 4");
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
    QVERIFY(m_site->host().addPanel(config));
    const QString search = u"%1 panels search --seconds 1 --search-port %2 --local-port 0"_s;
    const QString searchPort = QString::number(m_site->host().searchPort());

    // Declined: the list stays as it was.
    QCOMPARE(m_cli->runAsAdmin(CliRunner::words(search.arg(u"--no"_s, searchPort))).exitCode, 5);
    QVERIFY(!m_cli->run("panels list").out.contains(u"7A7A"_s));

    CliRunner::Result r = m_cli->runAsAdmin(CliRunner::words(search.arg(u"--yes"_s, searchPort)));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run("panels list");
    QVERIFY2(r.out.contains(u"7A7A"_s) && r.out.contains(u"2001"_s), qPrintable(r.out));

    // The door status of every usable panel, by datagram to the simulator's status port.
    p1->modify([](SimPanelState& s) { s.doorStates[1] = 1; });
    r = m_cli->run(CliRunner::words(
        u"panels status --wait 500 --status-port %1 --local-port 0"_s.arg(m_site->host().statusPort())));
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
    CliRunner::Result r = m_cli->run("panels settings show --panel 3");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"\nserial 2003\n"_s) && r.out.contains(u"door 4:"_s), qPrintable(r.out));

    // The save's question, its refusals and its silent corrections.
    const char* change = R"(panels settings set --panel 3 --name "Kapi Paneli" --relay-times 45,5,30,0 )"
                         "--capacity 0 --door 2 --direction 0 --door-name Bariyer";
    QCOMPARE(m_cli->runAsAdmin(change).exitCode, 4);
    QCOMPARE(m_cli->runAsAdmin("--yes panels settings set --panel 3 --serial 12345").exitCode, 1);
    QCOMPARE(m_cli->runAsAdmin("--yes panels settings set --panel 3 --door 1 --reader-model 1").exitCode, 2);
    r = m_cli->runAsAdmin(QStringList{ u"--yes"_s } + CliRunner::words(change));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    r = m_cli->run("panels settings show --panel 3");
    QVERIFY2(r.out.contains(u"\nrelay-times 1,5,30,1\n"_s) && r.out.contains(u"\ncapacity 9999\n"_s)
                 && r.out.contains(u"door-name=Bariyer"_s),
             qPrintable(r.out));

    // Sent by TCP: the panel keeps the record as stored.
    r = m_cli->runAsAdmin("--yes panels settings send --panel 3 --model 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QByteArray record;
    p3->inspect([&](const SimPanelState& s) { record = s.settings.record; });
    QCOMPARE(record.mid(58, 16), QByteArray("Kapi Paneli     "));
    QCOMPARE(record.mid(74, 2), QByteArray("01"));
    // The UHF model raised the repeated-access block to the whole panel, 1 second.
    QCOMPARE(record.mid(100, 1) + record.mid(102, 3), QByteArray("2001"));
    // And by broadcast, without a link.
    r = m_cli->runAsAdmin(
        CliRunner::words(u"--yes panels settings send --panel 3 --udp --search-port %1 --local-port 0 --name UDP"_s.arg(
            m_site->host().searchPort())));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QTRY_COMPARE(p3->requestCount("DS"), 2);

    // Clocks: the offset is kept and listed.
    p3->modify([](SimPanelState& s) { s.setClock(QDateTime::currentDateTime().addSecs(-600)); });
    r = m_cli->run("panels clock read --all-panels");
    QVERIFY2(r.exitCode == 0 && r.out.contains(u"panel 3: "_s), qPrintable(r.all()));
    QVERIFY2(r.out.contains(u" offset -6"_s), qPrintable(r.out));
    QVERIFY(m_cli->run("panels list").out.contains(u" -6"_s));
    r = m_cli->run("--yes panels clock set --all-panels");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p3->requestCount("DR"), 1);

    // The zone counter, below the capacity.
    QCOMPARE(m_cli->runAsAdmin("--yes panels counter set --panel 3 --zone 2 --value 9999").exitCode, 1);
    r = m_cli->runAsAdmin("--yes panels counter set --panel 3 --zone 2 --value 42");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(m_cli->run("panels counter read --panel 3 --zone 2").out.trimmed(), u"42"_s);
    QCOMPARE(m_cli->run("panels counter read --panel 3 --zone 3").exitCode, 2);

    // UHF readers.
    r = m_cli->runAsAdmin("--yes panels reader power --panel 3 --reader 2 --set 25");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(m_cli->run("panels reader power --panel 3 --reader 2").out.trimmed(), u"25 dBm"_s);
    r = m_cli->runAsAdmin("--yes panels reader led --panel 3 --reader 2 --buzzer 0 --led 1");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(m_cli->run("panels reader led --panel 3 --reader 2").out.trimmed(), u"buzzer 0 led 1"_s);

    r = m_cli->runAsAdmin("--yes panels remove --panel 3");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(m_cli->run("panels settings show --panel 3").exitCode, 1);
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
    CliRunner::Result r = m_cli->runAsAdmin("--yes users send --all-panels --parallel 3 --give-up-after 1");
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"2 nolu panel cevap vermiyor, bir sonraki çalışmaya bırakıldı."_s), qPrintable(r.all()));
    QCOMPARE(userCount(panels.at(0)), 4);
    QCOMPARE(userCount(panels.at(2)), 4);
    QCOMPARE(panels.at(1)->requestCount("MU"), 0);
    // The progress counts users over all panels, the one given up included, not panels.
    QVERIFY2(r.err.contains(u"12/12"_s) && !r.err.contains(u"3/3"_s), qPrintable(r.err));
    panels.at(1)->setFault(SimFault());

    // Without connecting: panel 2 still needs everyone, the others nothing but the edit.
    QVERIFY(m_cli->runAsAdmin("--yes users remove --user 4").exitCode == 0);
    const int before = panels.at(0)->totalRequests();
    r = m_cli->runAsAdmin("users send --all-panels --changed --dry-run");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"panel 1: would send 0 users, delete 1;"_s), qPrintable(r.out));
    QVERIFY2(r.out.contains(u"panel 2: would send 3 users, delete 0; never sent"_s), qPrintable(r.out));
    QVERIFY(r.out.contains(u"1 removed (4)"_s));
    QCOMPARE(panels.at(0)->totalRequests(), before);
    r = m_cli->run("panels list");
    QVERIFY2(r.out.contains(u"no (data changed since the last send)"_s), qPrintable(r.out));

    r = m_cli->runAsAdmin("--yes users send --all-panels --changed");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    for (SimPanel* panel : panels)
        QCOMPARE(userCount(panel), 3);
    QVERIFY(!m_cli->run("panels list").out.contains(u"no (data changed"_s));
}

QTEST_GUILESS_MAIN(CliPanelWorkTest)
#include "CliPanelWorkTest.moc"
