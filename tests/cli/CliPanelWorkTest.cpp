// kx410ctl driving simulated panels on loopback: the answers given by flags, exit statuses and what
// is printed. The operations' own rules and texts are their own tests'.

#include "CliSimSite.h"
#include "support/FaultOf.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
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
    // Yes without rights: refused before the question is put.
    r = m_cli->run("--yes users send --all-panels");
    QCOMPARE(r.exitCode, 4);
    QVERIFY2(r.err.contains(u"Yönetici şifresi gerekli: --admin-password N"_s), qPrintable(r.err));
    QVERIFY2(!r.err.contains(u"Kullanıcı listesini göndermek istiyor musunuz?"_s), qPrintable(r.err));
    QCOMPARE(m_cli->mismatch(
                 { { "--no users send --all-panels", 5 }, { "--yes users send --all-panels --first 3 --last 2", 1 } }),
             QString());
    QCOMPARE(p1->requestCount("NC"), 0);

    // Messages follow the chosen language: the answers, the notes, the counts and the progress
    // lines, which name the panel being served.
    r = m_cli->runAsAdmin("--lang en --yes users send --all-panels");
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(userCount(p2), 3);
    QVERIFY2(r.out.contains(u"All operations have been completed!\nPanel 1: 3 user(s) sent\nPanel 2: 3 user(s) sent"_s),
             qPrintable(r.out));
    QVERIFY2(r.err.contains(u" -> Yes\n"_s) && r.err.contains(u"\nPanel 2: 3/3\n"_s), qPrintable(r.err));
    QVERIFY2(!r.all().contains(u"Evet"_s), qPrintable(r.all()));
    r = m_cli->runAsAdmin("--lang en users send --all-panels");
    QVERIFY2(r.err.contains(u"This command asks a question: pass --yes"_s), qPrintable(r.err));
}

void CliPanelWorkTest::failingPanelStopsWithNoAndGoesOnWithYes()
{
    // The walk's question after a failure is its own test; here the answers the flags give it.
    QVERIFY(addPanel(1));
    addPanel(2)->setFault(faultOf(SimFault::Mode::Drop, "EC"));
    SimPanel* p3 = addPanel(3);
    SimUser user;
    user.id = 9;
    user.card = 99;
    p3->putUser(user);
    // Confirmed, then No to the failure question: the walk stops at panel 2.
    QCOMPARE(m_cli->mismatch({ { "--answers yes --no users erase --all-panels", 1 } }), QString());
    QCOMPARE(userCount(p3), 1);
    // Yes to everything: panel 3 is erased too; the failure still makes the exit status 1.
    QCOMPARE(m_cli->mismatch({ { "--yes users erase --all-panels", 1 } }), QString());
    QCOMPARE(userCount(p3), 0);
}

void CliPanelWorkTest::usersReceiveAndDelete()
{
    SimPanel* p1 = addPanel(1);
    QVERIFY(p1);
    for (int id : { 10, 11 }) {
        SimUser user;
        user.id = id;
        user.card = 770000 + id;
        p1->putUser(user);
    }
    CliRunner::Result r = m_cli->runAsAdmin("--yes users receive --panel 1 --first 10 --last 11");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    const QStringList lines = m_cli->listed("users list");
    QVERIFY2(lines.size() == 3 && lines[1].startsWith(u"10 770010"_s), qPrintable(lines.join(u'\n')));
    QCOMPARE(m_cli->mismatch(
                 { { "--yes users delete --user 10 --panel 1", 0 }, { "--yes users delete --user 99 --panel 1", 1 } }),
             QString());
    QVERIFY(!p1->user(10).has_value() && p1->user(11).has_value());

    // What was asked did not fully happen: a user the panel answered with noise for (the
    // question to go on answered yes), a pull asked to erase whose panel kept its memory.
    p1->setFault(faultOf(SimFault::Mode::Garbage, "UC"));
    r = m_cli->runAsAdmin("--yes users receive --panel 1 --first 11 --last 11");
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    p1->setFault(SimFault());
    p1->presentCard(1, 770011);
    p1->setFault(faultOf(SimFault::Mode::Drop, "EM"));
    r = m_cli->runAsAdmin("--yes records pull --panel 1 --erase");
    QVERIFY2(r.exitCode == 1, qPrintable(r.all()));
    QVERIFY2(r.out.contains(u"added=1"_s) && r.out.contains(u"erased=0"_s), qPrintable(r.out));
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
    QCOMPARE(m_cli->mismatch({ { "counters record-count --all-panels", 2, false },
                               { "--yes counters erase-records --panel 1", 0 },
                               { "--yes apb reset-all --all-panels", 0 },
                               { "--yes apb reset-user --user 4 --panel 2", 0 },
                               { "--yes counters erase-all --all-panels", 0 },
                               { "--yes counters inside --panel 1 --group 1", 1, false },
                               { "groups add Giriş --number 1", 0 },
                               { "--yes door open --all-panels --doors 1,3", 0 },
                               { "--yes door close --panel 1", 1 },
                               { "--yes door trigger --panel 1 --doors 5", 2, false },
                               { "--yes door trigger --panel 1 --doors 2", 4, false },
                               { "--yes door manual --panel 1 --door 2 --user 4", 0, false } }),
             QString());
    // Each command reached the panels it named, and only those.
    QCOMPARE((QList<int>{ p1->requestCount("EM"), p2->requestCount("EM"), p1->requestCount("SA"),
                          p2->requestCount("SA"), p2->requestCount("ES") }),
             (QList<int>{ 1, 0, 0, 1, 1 }));
    // The doors chosen are the doors driven.
    p1->inspect([](const SimPanelState& s) {
        QCOMPARE((QList<int>{ s.doorStates[0], s.doorStates[2], s.doorStates[3] }), (QList<int>{ 2, 2, 0 }));
    });
    r = m_cli->run("--yes counters inside --panel 1 --group 1");
    QVERIFY2(r.out.contains(u"'Giriş' grubuna ait içerdeki kullanıcı sayısı: 0"_s), qPrintable(r.all()));
}

void CliPanelWorkTest::searchReplacesTheListAndStatusShowsDoors()
{
    SimPanel* p1 = addPanel(1);
    QVERIFY(p1);
    SimPanelConfig config;
    config.number = 7;
    config.serial = 0x7A7A;
    QVERIFY(m_site->host().addPanel(config));
    CliRunner::Result r = m_cli->runAsAdmin(CliRunner::words(
        u"--yes panels search --seconds 1 --search-port %1 --local-port 0"_s.arg(m_site->host().searchPort())));
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QVERIFY(m_cli->run("panels list").out.contains(u"7A7A"_s));

    // The door status of every usable panel, by datagram to the simulator's status port.
    p1->modify([](SimPanelState& s) { s.doorStates[1] = 1; });
    r = m_cli->run(CliRunner::words(
        u"panels status --wait 500 --status-port %1 --local-port 0"_s.arg(m_site->host().statusPort())));
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    QVERIFY2(lines.size() == 3 && lines[1].startsWith(u"1 "_s) && lines[1].contains(u"closed   open     closed"_s)
                 && lines[2].startsWith(u"7 "_s) && lines[2].contains(u"online"_s),
             qPrintable(r.all()));
}

void CliPanelWorkTest::panelSettingsClockCounterAndReaders()
{
    SimPanel* p3 = addPanel(3);
    QVERIFY(p3);
    CliRunner::Result r;

    p3->modify([](SimPanelState& s) { s.setClock(QDateTime::currentDateTime().addSecs(-600)); });
    const QString udp = u"--yes panels settings send --panel 3 --udp --search-port %1 --local-port 0 --name UDP"_s.arg(
        m_site->host().searchPort());
    const QByteArray udpLine = udp.toUtf8();
    QCOMPARE(
        m_cli->mismatch({ { R"(panels settings set --panel 3 --name "Kapi Paneli" --door 2 --door-name Bariyer)", 4 },
                          { "--yes panels settings set --panel 3 --serial 12345", 1 },
                          { "--yes panels settings set --panel 3 --door 1 --reader-model 1", 2 },
                          { "--yes panels settings set --panel 3 --door 2 --door-name Bariyer", 0 },
                          { "--yes panels settings send --panel 3 --model 1", 0 },
                          { udpLine.constData(), 0 },
                          { "--yes panels counter set --panel 3 --zone 2 --value 9999", 1 },
                          { "--yes panels counter set --panel 3 --zone 2 --value 42", 0 },
                          { "panels counter read --panel 3 --zone 3", 2, false },
                          { "--yes panels reader power --panel 3 --reader 2 --set 25", 0 },
                          { "--yes panels reader led --panel 3 --reader 2 --buzzer 0 --led 1", 0 } }),
        QString());
    r = m_cli->run("panels settings show --panel 3");
    QVERIFY2(r.out.contains(u"\nserial 2003\n"_s) && r.out.contains(u"door-name=Bariyer"_s), qPrintable(r.all()));
    QCOMPARE(m_cli->run("panels counter read --panel 3 --zone 2").out.trimmed(), u"42"_s);
    QCOMPARE(m_cli->run("panels reader power --panel 3 --reader 2").out.trimmed(), u"25 dBm"_s);
    QCOMPARE(m_cli->run("panels reader led --panel 3 --reader 2").out.trimmed(), u"buzzer 0 led 1"_s);

    // Clocks: the offset is printed and kept.
    r = m_cli->run("panels clock read --all-panels");
    QVERIFY2(r.exitCode == 0 && r.out.contains(u"panel 3: "_s) && r.out.contains(u" offset -6"_s), qPrintable(r.all()));
    r = m_cli->run("--yes panels clock set --all-panels");
    QVERIFY2(r.exitCode == 0, qPrintable(r.all()));
    QCOMPARE(p3->requestCount("DR"), 1);

    QCOMPARE(
        m_cli->mismatch({ { "--yes panels remove --panel 3", 0 }, { "panels settings show --panel 3", 1, false } }),
        QString());
}

void CliPanelWorkTest::parallelSendReportsTheDeadPanelAndTheDryRunShowsWhatEachHolds()
{
    QList<SimPanel*> panels;
    for (int n = 1; n <= 3; ++n)
        panels << addPanel(n);
    QCOMPARE(addUsersToDatabase({ 1, 2, 3, 4 }), QString());
    // Panel 2 hangs up on every request: given up after one, the others are served.
    panels.at(1)->setFault(faultOf(SimFault::Mode::Drop));
    CliRunner::Result r = m_cli->runAsAdmin("--yes users send --all-panels --parallel 3 --give-up-after 1");
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(u"2 nolu panel cevap vermiyor, bir sonraki çalışmaya bırakıldı."_s), qPrintable(r.all()));
    QCOMPARE(userCount(panels.at(2)), 4);
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
    QVERIFY(m_cli->run("panels list").out.contains(u"no (data changed since the last send)"_s));
}

QTEST_GUILESS_MAIN(CliPanelWorkTest)
#include "CliPanelWorkTest.moc"
