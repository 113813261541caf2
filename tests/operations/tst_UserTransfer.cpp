#include "operations/users/UserRepository.h"
#include "operations/users/UserTransfer.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kAllDone = u"Tüm işlemler tamamlandı!"_s;
const QString kListEmpty = u"Kullanıcı listesi boş!"_s;

SimUser simUser(int id, qint64 card)
{
    SimUser u;
    u.id = id;
    u.card = card;
    u.pin = 4321;
    u.passageMode = 2;
    u.group = 17;
    u.calendarActive = true;
    u.calendar = 3;
    u.temporaryActive = true;
    u.temporaryGroup = 9;
    u.temporaryUntil = QDateTime(QDate(2016, 3, 5), QTime(14, 7));
    return u;
}

} // namespace

// Users between Users and the panels' card memory, against simulated panels.
class UserTransferTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sendsUsersInIdOrderAndTheHighestIdAndDeletesOne_data() { TestDatabases::addEngineRows(); }
    void sendsUsersInIdOrderAndTheHighestIdAndDeletesOne();
    void refusalsAreAskedAboutOrRetriedAndTheDailySendAsksNothing();
    void cardsThePanelsCannotCarryAreNeverSent();
    void receivesUsersIntoTheTable_data() { TestDatabases::addEngineRows(); }
    void receivesUsersIntoTheTable();
    void receiveGivenUpHalfWayLeavesTheTable_data() { TestDatabases::addEngineRows(); }
    void receiveGivenUpHalfWayLeavesTheTable();
    void scheduledSendStopsOnCancel();
};

void UserTransferTest::sendsUsersInIdOrderAndTheHighestIdAndDeletesOne()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    f.addUser(12, 5555);
    const qint64 zero = f.addUser(0, 4444); // never sent
    f.addUser(3, 12345);
    const qint64 seven = f.addUser(7, 777);
    UserTransfer users(f.context());

    f.op().yes();
    const WalkResult sent = users.sendUsers(PanelTarget::All, UserSelection::all());
    QVERIFY2(sent.succeeded(), qPrintable(f.op().told().join(u'|')));
    QCOMPARE(f.op().questions(), QStringList{ u"Kullanıcı listesini göndermek istiyor musunuz?"_s });
    // The final message counts what each panel took.
    QCOMPARE(f.op().told(),
             QStringList{ kAllDone + u"\nPanel 1: 3 kullanıcı gönderildi\nPanel 2: 3 kullanıcı gönderildi"_s });
    for (SimPanel* p : { p1, p2 }) {
        QCOMPARE(p->requestCount("NC"), 3);
        QCOMPARE(p->requestCount("MU"), 1);
        QCOMPARE(p->user(3)->card, 12345);
        QCOMPARE(p->user(3)->pin, 1234);
        int announced = 0;
        p->inspect([&](const SimPanelState& s) { announced = s.announcedUserCount; });
        QCOMPARE(announced, 12);
    }
    // Progress counts users on each panel.
    QVERIFY(f.op().progressSteps().contains(qMakePair(3, 3)));

    f.op().yes();
    QVERIFY(users.sendUsers(PanelTarget::Selected, UserSelection::ids(UserIdRange::of(7, 7))).succeeded());
    QCOMPARE(f.op().lastTold(), u"Kullanıcı bilgileri gönderme işlemi tamamlandı!\nPanel 1: 1 kullanıcı gönderildi"_s);
    QCOMPARE(p1->requestCount("NC"), 4);

    // The selected user alone: the panel is told the highest ID of the table all the same.
    p1->modify([](SimPanelState& s) { s.announcedUserCount = 0; });
    f.op().clearRecords();
    f.op().yes();
    QVERIFY(users.sendSelectedUser(PanelTarget::Selected, seven).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"Seçilen kullanıcı bilgisini göndermek istiyor musunuz?"_s });
    QCOMPARE(f.op().lastTold(), u"İşlem başarı ile tamamlandı!"_s);
    p1->inspect([](const SimPanelState& s) { QCOMPARE(s.announcedUserCount, 12); });
    f.op().yes();
    QCOMPARE(users.sendSelectedUser(PanelTarget::Selected, 0).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), kListEmpty);

    // Ranges and empty selections are refused before any panel.
    const int requests = p1->totalRequests();
    const QString refusal = u"Sınırlı kullanıcı gönderme işlemini seçtiniz. Ancak, İlk ID veya Son ID değerleri "
                            u"hatalı! Lütfen kontrol ediniz!\n İlk ID ve Son ID değerleri 20.000'den büyük olamaz. "
                            u"İlk ID değeri Son ID değerinden küçük olmalıdır."_s;
    const QList<QPair<QString, QString>> bad
        = { { u"0"_s, u"5"_s }, { u"5"_s, u"20001"_s }, { u"9"_s, u"3"_s }, { u"a"_s, u"5"_s } };
    for (const auto& [first, last] : bad) {
        f.op().yes();
        const WalkResult r
            = users.sendUsers(PanelTarget::Selected, UserSelection::ids(UserIdRange::fromText(first, last)));
        QCOMPARE(r.outcome, WalkResult::Outcome::Refused);
        QCOMPARE(f.op().lastTold(), refusal);
    }
    QVERIFY(UserIdRange::fromText(u" 20000"_s, u"20000 "_s).isValid());
    f.op().yes();
    QCOMPARE(users.sendUsers(PanelTarget::All, UserSelection::ids(UserIdRange::of(100, 200))).outcome,
             WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), kListEmpty);
    f.op().yes();
    QCOMPARE(users.receiveUsers(UserIdRange::of(9, 3)).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(),
             u"İlk ID veya Son ID değerleri hatalı! Lütfen kontrol ediniz!\nİlk ID ve Son ID "
             u"değerleri 20.000'den büyük olamaz. İlk ID değeri Son ID değerinden küçük olmalıdır."_s);
    QCOMPARE(p1->totalRequests(), requests);

    // Deleting the selected user: a panel that fails is asked about; the station keeps the row.
    f.op().yes();
    QCOMPARE(users.deleteSelectedUser(PanelTarget::All, zero).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Kullanıcı ID hatalı!"_s);
    p2->setFault(faultOf(SimFault::Mode::Drop, {}, 1));
    f.op().yes().no();
    QCOMPARE(users.deleteSelectedUser(PanelTarget::All, seven).outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(f.op().questions().last(), u"7 nolu kullanıcı 2 nolu panelden silinemedi, Devam etmek istiyor musunuz?"_s);
    QVERIFY(!p1->user(7));
    f.op().yes();
    QVERIFY(users.deleteSelectedUser(PanelTarget::All, seven).succeeded());
    QCOMPARE(f.op().questions().last(), u"Seçilen kullanıcı panelden veya panellerden silmek istiyor musunuz?"_s);
    QVERIFY(!p2->user(7));
    QVERIFY(UserRepository(f.db()).byId(7));
}

void UserTransferTest::refusalsAreAskedAboutOrRetriedAndTheDailySendAsksNothing()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    f.addUser(3, 33);
    f.addUser(4, 44);
    UserTransfer users(f.context());

    // A user a panel refuses is asked about, and not sent to it again.
    p1->setFault(faultOf(SimFault::Mode::Refuse, "NC", 1));
    f.op().yes(2);
    WalkResult r = users.sendUsers(PanelTarget::All, UserSelection::all());
    QCOMPARE(f.op().questions().value(1),
             u"3 nolu kullanıcı 1 nolu panele gönderilemedi, Devam etmek istiyor musunuz?"_s);
    QCOMPARE(r.outcome, WalkResult::Outcome::Completed);
    QCOMPARE(p1->requestCount("NC"), 2);
    QVERIFY(!p1->user(3) && p1->user(4));
    QCOMPARE(p2->requestCount("NC"), 2);
    // No to it stops there, the user count not sent.
    p1->modify([](SimPanelState& s) { s.clearUsers(); });
    p1->resetRequestCounts();
    p1->setFault(faultOf(SimFault::Mode::Refuse, "NC", 1));
    f.op().clearRecords();
    f.op().yes().no();
    r = users.sendUsers(PanelTarget::Selected, UserSelection::all());
    QCOMPARE(f.op().questions().value(1), u"3 nolu kullanıcı bilgisi gönderilemedi, Devam etmek istiyor musunuz?"_s);
    QCOMPARE(r.outcome, WalkResult::Outcome::Stopped);
    QVERIFY(!p1->user(4));
    QCOMPARE(p1->requestCount("MU"), 0);
    QVERIFY(f.op().told().isEmpty());

    // The user count is tried again once without a word.
    f.op().clearRecords();
    for (SimPanel* p : { p1, p2 })
        p->resetRequestCounts();
    p1->setFault(faultOf(SimFault::Mode::Refuse, "MU", 1));
    f.op().yes();
    QVERIFY(users.sendUsers(PanelTarget::All, UserSelection::all()).succeeded());
    QCOMPARE(p1->requestCount("MU"), 2);
    QCOMPARE(f.op().questions().size(), 1);

    // Both tries refused, on each way of answering.
    const QString question = u"1 nolu panele kullanıcı bilgileri gönderildi. Ancak kullanıcı sayısı gönderilemedi. "
                             u"Devam etmek istiyor musunuz?"_s;
    p1->setFault(faultOf(SimFault::Mode::Refuse, "MU", 2));
    f.op().yes(2);
    r = users.sendUsers(PanelTarget::All, UserSelection::all());
    QCOMPARE(f.op().questions().last(), question);
    QCOMPARE(r.panelsFailed, 1);
    QCOMPARE(p2->requestCount("MU"), 2);

    p1->setFault(faultOf(SimFault::Mode::Refuse, "MU", 2));
    f.op().yes().no();
    r = users.sendUsers(PanelTarget::All, UserSelection::all());
    QCOMPARE(r.outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(p2->requestCount("MU"), 2);

    p1->setFault(faultOf(SimFault::Mode::Refuse, "MU", 2));
    f.op().clearRecords();
    f.op().yes();
    users.sendUsers(PanelTarget::Selected, UserSelection::all());
    QCOMPARE(f.op().told(),
             QStringList{ u"Kullanıcılar gönderildi, Ancak kullanıcı sayısı gönderilemedi. Tekrar deneyiniz!"_s });

    // Nobody is logged in: the daily send needs no rights.
    f.op().clearRecords();
    f.session().logOut();
    for (SimPanel* p : { p1, p2 }) {
        p->modify([](SimPanelState& s) { s.clearUsers(); });
        p->resetRequestCounts();
    }
    // One refusal is covered by the second try; two make the user fail.
    p1->setFault(faultOf(SimFault::Mode::Refuse, "NC", 1));
    p2->setFault(faultOf(SimFault::Mode::Refuse, "NC", 2));
    QStringList sink;
    QVERIFY(users.scheduledSend([&](const Message& m) { sink << m.turkish(); }).completed());
    QVERIFY(f.op().questions().isEmpty());
    QCOMPARE(f.op().loginRequests(), 0);
    QCOMPARE(p1->requestCount("NC"), 3);
    QVERIFY(p1->user(3) && p1->user(4));
    QVERIFY(!p2->user(3));
    QVERIFY(p2->user(4));
    // The failing panels are told together at the end as well.
    QCOMPARE(sink,
             QStringList({ u"3 nolu kullanıcı 2 nolu panele gönderilemedi"_s, u"Panel 2 : Hata, İşlem tamamlanamadı!"_s,
                           kAllDone }));

    p1->setFault(faultOf(SimFault::Mode::Refuse, "MU", 2));
    sink.clear();
    users.scheduledSend([&](const Message& m) { sink << m.turkish(); });
    QCOMPARE(sink,
             QStringList({ u"1 nolu panele kullanıcı bilgileri gönderildi. Ancak kullanıcı sayısı gönderilemedi"_s,
                           u"Panel 1 : Hata, İşlem tamamlanamadı!"_s, kAllDone }));
}

void UserTransferTest::cardsThePanelsCannotCarryAreNeverSent()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    // Rows an old database or another station may hold: cut to 32 bits, 4294967295 would go out
    // as 0000000000 and 9999999999 as someone else's 1410065407.
    f.addUser(3, 33);
    const qint64 five = f.addUser(5, 4294967295LL);
    f.addUser(12, 2147483647);
    f.addUser(15, 9999999999LL);
    const QString refused5 = u"5 nolu kullanıcı panele gönderilemez, Kart ID hatalı!"_s;
    UserTransfer users(f.context());

    f.op().yes();
    const WalkResult r = users.sendUsers(PanelTarget::All, UserSelection::all());
    QCOMPARE(f.op().told(),
             QStringList({ refused5 + u"\n15 nolu kullanıcı panele gönderilemez, Kart ID hatalı!"_s,
                           kAllDone + u"\nPanel 1: 2 kullanıcı gönderildi\nPanel 2: 2 kullanıcı gönderildi"_s }));
    QVERIFY(r.completed() && !r.succeeded());
    for (SimPanel* p : { p1, p2 }) {
        QCOMPARE(p->requestCount("NC"), 2);
        QCOMPARE(p->user(12)->card, 2147483647);
    }

    // The selected user alone is refused before any panel; the daily send names it and goes on.
    f.op().yes();
    QCOMPARE(users.sendSelectedUser(PanelTarget::Selected, five).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), refused5);
    QStringList sink;
    QVERIFY(!users.scheduledSend([&](const Message& m) { sink << m.turkish(); }).succeeded());
    QCOMPARE(sink.first(), refused5);
    QCOMPARE(p1->requestCount("NC"), 4);
}

void UserTransferTest::receivesUsersIntoTheTable()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    for (int id = 1; id <= 3; ++id)
        p1->putUser(simUser(id, 1000 + id));
    // A slot whose card stretch reads 0 counts as empty ("INVALID").
    p1->putUser(simUser(10, 0));
    f.addUser(10, 1010);
    UserTransfer users(f.context());

    f.op().yes(2);
    QVERIFY(users.receiveUsers(UserIdRange::of(1, 3)).succeeded());
    QCOMPARE(f.op().questions(),
             QStringList({ u"Bu işlem sadece seçilen panel için yapılacak, Devam etmek istiyor musunuz?"_s,
                           u"1 - 3 arasındaki kullanıcıları almak istiyor musunuz?\nÖnemli Not: Mevcut kullanıcı "
                           u"listesi güncellenecek!"_s }));
    QCOMPARE(f.op().told(), QStringList{ kAllDone });
    UserRepository repo(f.db());
    QCOMPARE(f.userCount(), 4);
    // Every field the panel holds is taken (a known user keeps the others: the repository's test).
    const UserRow t = *repo.byId(3);
    QCOMPARE(std::tuple(t.cardId, t.pin, t.passageMode, t.groupNo, t.calendarActive, t.calendarNo,
                        t.temporaryGroupActive, t.temporaryGroupNo, t.temporaryGroupDate, t.temporaryGroupTime),
             std::tuple(qint64(1003), 4321, 2, 17, true, 3, true, 9, QDate(2016, 3, 5), QTime(14, 7)));

    f.op().yes(2);
    QVERIFY(users.receiveUsers(UserIdRange::of(10, 10)).succeeded());
    QCOMPARE(repo.byId(10)->cardId, 1010);
    QCOMPARE(p1->requestCount("UC"), 4);

    // The selected user alone.
    p1->putUser(simUser(10, 4242));
    QVERIFY(users.receiveSelectedUser(repo.byId(10)->recordNo).succeeded());
    QCOMPARE(repo.byId(10)->cardId, 4242);
    QCOMPARE(f.op().lastTold(), u"İşlem başarı ile tamamlandı!"_s);
}

void UserTransferTest::receiveGivenUpHalfWayLeavesTheTable()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    // Slot 3 holds nobody: the panel marks it, which reads as an error.
    for (int id : { 1, 2, 4 })
        p1->putUser(simUser(id, 500 + id));
    f.addUser(1, 1);
    UserTransfer users(f.context());
    UserRepository repo(f.db());

    // No: nothing of the range is stored.
    f.op().yes(2).no();
    QCOMPARE(users.receiveUsers(UserIdRange::of(1, 4)).outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(f.op().questions().last(), u"3 nolu kullanıcının bilgileri alınamadı, Devam etmek istiyoru musunuz?"_s);
    QCOMPARE(f.userCount(), 1);
    QCOMPARE(repo.byId(1)->cardId, 1);
    QCOMPARE(p1->requestCount("UC"), 3);

    // Yes: the others are.
    f.op().yes(3);
    QVERIFY(users.receiveUsers(UserIdRange::of(1, 4)).completed());
    QCOMPARE(f.userCount(), 3);
    QCOMPARE(repo.byId(4)->cardId, 504);
}

void UserTransferTest::scheduledSendStopsOnCancel()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    for (int id = 1; id <= 5; ++id)
        f.addUser(id, 100 + id);
    f.op().setCancelAfter(7);
    QStringList sink;
    // One panel at a time, so that the cancel falls at a known user.
    UserTransfer::Unattended oneAtATime;
    oneAtATime.walk.parallel = 1;
    const WalkResult r
        = UserTransfer(f.context()).scheduledSend([&](const Message& m) { sink << m.turkish(); }, oneAtATime);
    QCOMPARE(r.outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(p1->requestCount("NC"), 5);
    QCOMPARE(p2->requestCount("NC"), 2);
    QCOMPARE(p2->requestCount("MU"), 0);
    QVERIFY(sink.isEmpty());
}

QTEST_GUILESS_MAIN(UserTransferTest)
#include "tst_UserTransfer.moc"
