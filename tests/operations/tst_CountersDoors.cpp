#include "operations/doors/CounterOperations.h"
#include "operations/doors/DoorOperations.h"
#include "operations/users/VisitorRepository.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kAllDone = u"Tüm işlemler tamamlandı!"_s;
const QString kDone = u"İşlem başarı ile tamamlandı!"_s;

} // namespace

// Anti-passback, counters, inside counts, record memory and doors against simulated panels.
class CountersDoorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clearingMembersAskAndGoOn_data();
    void clearingMembersAskAndGoOn();
    void membersNeedAUserOrAGroupAndReadWhatThePanelHolds();
    void doorProcessRefusesAnEmptyChoiceAndDrivesDoorsPanelByPanel();
    void manualAccessStoresThePassage_data() { TestDatabases::addEngineRows(); }
    void manualAccessStoresThePassage();
};

void CountersDoorsTest::clearingMembersAskAndGoOn_data()
{
    QTest::addColumn<int>("member");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QString>("confirmation");
    QTest::addColumn<QString>("failure");
    const QString standard = u"1 nolu panelde hata oluştu. İşlem tamamlanamadı! Devam etmek istiyor musunuz?"_s;
    QTest::newRow("anti-passback, all users")
        << 0 << QByteArray("PA") << u"Tüm kullanıcıların Antipassback sayaçlarını silmek istediğinizden emin misiniz?"_s
        << u"1 nolu panelde tüm kullanıcıların Antipassback sayaç hafızası silinemedi! Devam etmek istiyor musunuz?"_s;
    QTest::newRow("anti-passback, one user")
        << 1 << QByteArray("SA")
        << u"7 nolu kullanıcının Antipassback sayaç hafızasını silmek istediğinizden emin misiniz?"_s << standard;
    QTest::newRow("access counters, all")
        << 2 << QByteArray("ES")
        << u"Tüm geçiş sayaç hafızasını silmek istediğinizden emin misiniz?\n(Not: Bu işlem her bir panel için "
           u"yaklaşık 5 saniye sürecektir!)"_s
        << standard;
    QTest::newRow("access counter, one user")
        << 3 << QByteArray("EP") << u"7 nolu kullanıcının geçiş sayaç hafızasını silmek istediğinizden emin misiniz?"_s
        << u"7 nolu kullanıcının 1 nolu paneldeki geçiş sayaç hafızası silinemedi!\nDevam etmek istiyor musunuz?"_s;
    QTest::newRow("record memory") << 4 << QByteArray("EM")
                                   << u"Tüm panellerde offline geçiş hafızasını silmek istediğinizden emin misiniz?"_s
                                   << standard;
}

void CountersDoorsTest::clearingMembersAskAndGoOn()
{
    QFETCH(int, member);
    QFETCH(QByteArray, code);
    QFETCH(QString, confirmation);
    QFETCH(QString, failure);
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    const qint64 seven = f.addUser(7, 777);
    CounterOperations counters(f.context());
    auto run = [&] {
        switch (member) {
        case 0:
            return counters.resetAllAntiPassback(PanelTarget::All);
        case 1:
            return counters.resetUserAntiPassback(PanelTarget::All, seven);
        case 2:
            return counters.eraseAllAccessCounters(PanelTarget::All);
        case 3:
            return counters.eraseUserAccessCounter(PanelTarget::All, seven);
        default:
            return counters.eraseRecordMemory(PanelTarget::All);
        }
    };

    // An echoed code is acceptance; a dropped link is the failure.
    p1->setFault(faultOf(SimFault::Mode::Drop, {}, 1));
    f.op().yes(2);
    const WalkResult r = run();
    QCOMPARE(f.op().questions(), QStringList({ confirmation, failure }));
    QCOMPARE(r.outcome, WalkResult::Outcome::Completed);
    QCOMPARE(r.panelsFailed, 1);
    QCOMPARE(p2->requestCount(code), 1);
    QCOMPARE(f.op().told(), QStringList{ kAllDone });

    // Without rights nothing is sent.
    f.session().logOut();
    f.op().yes();
    QCOMPARE(run().outcome, WalkResult::Outcome::NoRights);
    QCOMPARE(p1->requestCount(code), 1);
}

void CountersDoorsTest::membersNeedAUserOrAGroupAndReadWhatThePanelHolds()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    f.addGroup(3, u"Personel"_s, 5);
    const qint64 seven = f.addUser(7, 777, 3);
    p1->modify([](SimPanelState& s) {
        s.insideCounts.insert(3, 12);
        s.canteenCounts.insert(7, { 1, 2, 3 });
    });
    p1->seedRecords(5);
    CounterOperations counters(f.context());

    QCOMPARE(counters.resetUserAntiPassback(PanelTarget::All, 0).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Kullanıcı listesi boş!"_s);
    QCOMPARE(counters.clearGroupInsideCount(4).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Geçiş grup listesi boş!"_s);
    QVERIFY(f.op().questions().isEmpty());

    // Reading needs no rights.
    f.session().logOut();
    QString count;
    QVERIFY(counters.readGroupInsideCount(3, &count).succeeded());
    QCOMPARE(count, u"12"_s);
    QCOMPARE(f.op().lastTold(), u"'Personel' grubuna ait içerdeki kullanıcı sayısı: 12"_s);
    QVERIFY(f.op().questions().isEmpty());

    qint32 records = -1;
    f.op().yes();
    QVERIFY(counters.readRecordCount(&records).succeeded());
    QCOMPARE(records, 5);
    QCOMPARE(f.op().questions().last(),
             u"Bu işlem sadece seçilen panel için yapılacak, Devam etmek istiyor musunuz?"_s);

    QString text;
    f.op().yes();
    QVERIFY(counters.readUserAccessCounter(seven, &text).succeeded());
    const QString expected = u"7nolu kullanıcı geçiş sayaç değerleri; Standart Geçiş Sınırlama Tipi >> Kalan:999 ,  "
                             u"Grup Gecis Sayisi:5; Yemekhane Geçiş Sınırlama Tipi >> Saat 1: 1 ,  Saat 2: 2 ,  "
                             u"Saat 3: 3"_s;
    QCOMPARE(text, expected);
    QCOMPARE(f.op().lastTold(), expected);

    f.session().logInAsAdministrator(u"admin"_s);
    f.op().yes();
    QVERIFY(counters.clearGroupInsideCount(3).succeeded());
    QCOMPARE(f.op().questions().last(),
             u"'Personel' geçiş grubu için içerdeki kullanıcı sayısını silmek istediğinizden emin misiniz?"_s);
    QCOMPARE(f.op().lastTold(), kDone);
    int inside = -1;
    p1->inspect([&](const SimPanelState& s) { inside = s.insideCounts.value(3); });
    QCOMPARE(inside, 0);

    f.op().yes();
    QVERIFY(counters.clearAllInsideCounts().succeeded());
    QCOMPARE(f.op().questions().last(),
             u"Tüm geçiş grupları için içerdeki kullanıcı sayısını silmek istediğinizden emin misiniz?"_s);
    QCOMPARE(p1->requestCount("MA"), 1);
}

void CountersDoorsTest::doorProcessRefusesAnEmptyChoiceAndDrivesDoorsPanelByPanel()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    f.addRow(2, 0x1002, u"127.0.0.1"_s, StationFixture::deadPort());
    SimPanel* p3 = f.addPanel(3);
    DoorOperations doors(f.context());
    DoorRequest request;
    request.doors[0] = true;
    // Said before the confirmation: nobody is asked to go on with nothing to do.
    QCOMPARE(doors.doorProcess(PanelTarget::All, request).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Lütfen bir kapı işlemi seçiniz!"_s);
    request = DoorRequest();
    request.action = 0;
    QCOMPARE(doors.doorProcess(PanelTarget::All, request).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Lütfen bir röle seçiniz"_s);
    ManualAccessRequest noDoor;
    noDoor.door = 0;
    QCOMPARE(doors.manualAccess(noDoor).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Lütfen bir kapı işlemi seçiniz!"_s);
    QVERIFY(f.op().questions().isEmpty());
    QCOMPARE(p1->totalRequests(), 0);

    f.op().clearRecords();
    request.action = 1;
    request.doors = { true, false, true, false };
    f.op().yes();
    const WalkResult r = doors.doorProcess(PanelTarget::All, request);
    QCOMPARE(f.op().questions(), QStringList{ u"Kapı işlemini gerçekleştirmek istiyor musunuz?"_s });
    QCOMPARE(r.outcome, WalkResult::Outcome::Completed);
    QCOMPARE(r.panelsFailed, 1);
    QCOMPARE(
        f.op().statusLines(),
        QStringList({ u"Panel 1 : Bağlanılıyor..."_s, u"Panel 1 : " + kDone, u"Panel 2 : Bağlanılıyor..."_s,
                      u"Panel 2 : Bağlantı Kurulamadı!"_s, u"Panel 3 : Bağlanılıyor..."_s, u"Panel 3 : " + kDone }));
    QCOMPARE(f.op().told(), QStringList{ kAllDone });
    for (SimPanel* p : { p1, p3 })
        p->inspect([](const SimPanelState& s) { QCOMPARE(s.doorStates, (std::array<int, 4>{ 2, 0, 2, 0 })); });

    f.session().logOut();
    f.op().yes();
    QCOMPARE(doors.doorProcess(PanelTarget::All, request).outcome, WalkResult::Outcome::NoRights);
    QCOMPARE(p1->totalRequests(), 1);
}

void CountersDoorsTest::manualAccessStoresThePassage()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(4);
    f.db().exec(u"UPDATE \"PanelSettings\" SET \"Kapi2 Lokal Bolge\" = 2, \"Panel Global Bolge2\" = 7, "
                u"\"Kapi2 Kapi Tipi\" = 1"_s);
    const qint64 seven = f.addUser(7, 777);
    f.addUser(901, 9010);
    VisitorRepository visits(f.db());
    VisitRow today{ 0, 901, 0, u"Ayşe"_s, u"Demir"_s, {}, {}, f.now().date(), QTime(9, 0), u"Toplantı"_s, 1, 7 };
    VisitRow yesterday = today;
    yesterday.date = today.date.addDays(-1);
    QVERIFY(visits.registerVisit(today));
    QVERIFY(visits.registerVisit(yesterday));
    // Passage by hand needs no rights.
    f.session().logOut();
    DoorOperations doors(f.context());

    ManualAccessRequest request;
    request.door = 2;
    request.userRecordNo = seven;
    f.op().yes();
    QVERIFY(doors.manualAccess(request).succeeded());

    // The door command carries the card: one the panels cannot hold is refused, not cut.
    request.userRecordNo = f.addUser(8, 4294967295LL);
    f.op().yes();
    QCOMPARE(doors.manualAccess(request).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"8 nolu kullanıcı panele gönderilemez, Kart ID hatalı!"_s);

    request.userRecordNo = 0;
    request.visitNo = yesterday.visitNo;
    f.op().yes();
    QCOMPARE(doors.manualAccess(request).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Bu ziyaretçi bugün geçiş yapamaz. Lütfen tarihi düzeltiniz."_s);

    request.visitNo = today.visitNo;
    f.op().yes();
    QVERIFY(doors.manualAccess(request).succeeded());
    QCOMPARE(p1->requestCount("DT"), 2); // the refused ones were never sent

    const QList<QVariantList> rows
        = f.db().rows(u"SELECT \"Panel ID\", \"Lokal Bolge No\", \"Global Bolge No\", \"Kapi ID\", \"ID\", "
                      u"\"Kart ID\", \"Gecis Tipi\", \"Kod\", \"Kullanici Tipi\", \"Visitor No\", \"Tarih\" "
                      u"FROM \"AccessDatas\" ORDER BY \"Kayit No\""_s);
    const auto numbers = [](const QVariantList& row) {
        QList<qint64> out;
        for (int column = 0; column < 10; ++column)
            out << row[column].toLongLong();
        return out;
    };
    QCOMPARE(rows.size(), 2);
    QCOMPARE(numbers(rows[0]), (QList<qint64>{ 4, 2, 7, 2, 7, 777, 1, 1, 0, 0 }));
    QCOMPARE(Database::dateTime(rows[0][10]), f.now());
    QCOMPARE(numbers(rows[1]), (QList<qint64>{ 4, 2, 7, 2, 901, 9010, 1, 1, 1, today.visitNo }));
}

QTEST_GUILESS_MAIN(CountersDoorsTest)
#include "tst_CountersDoors.moc"
