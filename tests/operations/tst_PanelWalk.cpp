#include "operations/doors/CounterOperations.h"
#include "operations/panels/PanelRoster.h"
#include "operations/users/UserTransfer.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kAllDone = u"Tüm işlemler tamamlandı!"_s;
const QString kNoLink = u"TCPIP Portu Açılamadı"_s;
const QString kNoRights = u"Yetki hatası, Yönetici şifresi gerekli!"_s;

} // namespace

// The road every panel operation takes, seen through the card memory erase (one command per
// panel) against simulated panels.
class PanelWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rosterLoadsInListOrderAndTellsEligibility();
    void walkSkipsUnusableEntriesStopsAtALinkFailureAndRestoresSelection();
    void noToTheFailureQuestionStops();
    void selectedPanelReportsItsOwnResult();
    void confirmationAndRightsGuardTheWalk();
    void clientStationReachesOnlyWatchedPanels();
};

void PanelWalkTest::rosterLoadsInListOrderAndTellsEligibility()
{
    KX_READY_STATION(f);
    f.addRow(5, 0x12AB, u"127.0.0.5"_s, 5000);
    f.addRow(3, 0x0001, u"0.0.0.0"_s, 5000);
    // List position, not panel number, orders the roster.
    f.db().exec(u"UPDATE \"PanelSettings\" SET \"Sira No\" = 9 WHERE \"Panel ID\" = 5"_s);
    f.reloadRoster();
    const QList<PanelEntry> entries = f.roster().entries();
    QCOMPARE(entries.size(), 2);
    QCOMPARE(std::tuple(entries[0].panelNumber, entries[0].position, entries[0].ip, entries[0].isEligible()),
             std::tuple(3, 1, QString(), false));
    QCOMPARE(std::tuple(entries[1].serialText(), entries[1].isEligible()), std::tuple(u"12AB"_s, true));
    QCOMPARE(entries[1].address(), PanelAddress(5, 0x12AB));

    QList<PanelEntry> many;
    for (int i = 1; i <= 70; ++i)
        many << PanelEntry{ 0, i, 1, u"127.0.0.1"_s, 1, {}, i, std::nullopt, false };
    f.roster().setEntries(many);
    QCOMPARE(f.roster().count(), PanelRoster::MaxPanels);
    QCOMPARE(f.roster().entry(64)->position, 64);
    QVERIFY(!f.roster().select(65));
}

void PanelWalkTest::walkSkipsUnusableEntriesStopsAtALinkFailureAndRestoresSelection()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    // Entries that must be skipped silently: each would fail to connect if tried.
    f.addRow(2, 0, u"127.0.0.1"_s, StationFixture::deadPort());
    f.addRow(3, 0x1003, u"127.0.0.1"_s, 0);
    f.addRow(4, 0x1004, u"0.0.0.0"_s, StationFixture::deadPort());
    f.addRow(0, 0x1005, u"127.0.0.1"_s, StationFixture::deadPort());
    SimPanel* p6 = f.addPanel(6);
    f.roster().select(3);

    f.op().yes();
    const WalkResult r = UserTransfer(f.context()).eraseCardMemory(PanelTarget::All);
    QVERIFY(r.succeeded());
    QCOMPARE(r.panelsVisited, 2);
    QCOMPARE(p1->requestCount("EC"), 1);
    QCOMPARE(p6->requestCount("EC"), 1);
    QCOMPARE(f.op().told(), QStringList{ kAllDone });
    QCOMPARE(f.op().questions().first(),
             u"Tüm kart hafızasını silmek istediğinizden emin misiniz?\n"
             u"(Not: Bu işlem her bir panel için yaklaşık 30 saniye sürecektir!)"_s);
    // Progress counts roster positions and is cleared at the end.
    QVERIFY(f.op().progressSteps().contains(qMakePair(6, 6)));
    QCOMPARE(f.op().progressSteps().last(), qMakePair(0, 0));
    QCOMPARE(f.roster().selectedPosition(), 3);
    QVERIFY(!f.link().isConnected());

    // A panel that may be reached but is not stops the whole walk.
    f.addRow(7, 0x1007, u"127.0.0.1"_s, StationFixture::deadPort());
    SimPanel* p8 = f.addPanel(8);
    f.roster().select(3);
    f.op().clearRecords();
    f.op().yes();
    QCOMPARE(UserTransfer(f.context()).eraseCardMemory(PanelTarget::All).outcome, WalkResult::Outcome::LinkFailed);
    QCOMPARE(p6->requestCount("EC"), 2);
    QCOMPARE(p8->requestCount("EC"), 0);
    QCOMPARE(f.op().told(), QStringList{ kNoLink });
    QCOMPARE(f.roster().selectedPosition(), 3);
}

// Going on after a failure is the counters' test, which shares this walk.
void PanelWalkTest::noToTheFailureQuestionStops()
{
    KX_READY_STATION(f);
    f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    SimPanel* p3 = f.addPanel(3);
    // Any answer holding "EC" counts for the erase, so a dropped link is its failure.
    p2->setFault(faultOf(SimFault::Mode::Drop));
    f.op().yes().no();
    const WalkResult r = UserTransfer(f.context()).eraseCardMemory(PanelTarget::All);
    QCOMPARE(f.op().questions().value(1),
             u"2 nolu panelde hata oluştu. İşlem tamamlanamadı! Devam etmek istiyor musunuz?"_s);
    QCOMPARE(r.outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(r.panelsFailed, 1);
    QCOMPARE(p3->requestCount("EC"), 0);
    QVERIFY(f.op().told().isEmpty());
    QVERIFY(!f.link().isConnected());
}

void PanelWalkTest::selectedPanelReportsItsOwnResult()
{
    KX_READY_STATION(f);
    f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    f.roster().select(2);
    UserTransfer users(f.context());

    // The erase looks for "EC" anywhere: even a refusal counts as done.
    p2->setFault(faultOf(SimFault::Mode::Refuse, "EC"));
    f.op().yes();
    QVERIFY(users.eraseCardMemory(PanelTarget::Selected).succeeded());
    QCOMPARE(f.op().lastTold(), u"İşlem başarı ile tamamlandı!"_s);

    // A dropped link is a failure, once and again on a fresh link.
    for (int round = 0; round < 2; ++round) {
        p2->setFault(faultOf(SimFault::Mode::Drop, {}, 1));
        f.op().yes();
        const WalkResult r = users.eraseCardMemory(PanelTarget::Selected);
        QCOMPARE(r.panelsFailed, 1);
        QCOMPARE(f.op().lastTold(), u"Hata, İşlem tamamlanamadı!"_s);
    }
    QCOMPARE(p2->requestCount("EC"), 3);
    QVERIFY(!f.link().isConnected());

    // The selected entry has no reachable address.
    f.addRow(9, 0x1009, u"127.0.0.1"_s, StationFixture::deadPort());
    f.roster().select(3);
    f.op().yes();
    QCOMPARE(users.eraseCardMemory(PanelTarget::Selected).outcome, WalkResult::Outcome::LinkFailed);
    QCOMPARE(f.op().lastTold(), kNoLink);
}

void PanelWalkTest::confirmationAndRightsGuardTheWalk()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    UserTransfer users(f.context());

    f.op().no();
    QCOMPARE(users.eraseCardMemory(PanelTarget::All).outcome, WalkResult::Outcome::Declined);
    QCOMPARE(f.op().loginRequests(), 0);

    // Rights last ten minutes of the station clock.
    f.clock().advanceSecs(OperatorSession::AdministratorSeconds - 1);
    f.op().yes();
    QVERIFY(users.eraseCardMemory(PanelTarget::All).succeeded());
    f.clock().advanceSecs(1);
    f.op().clearRecords();
    f.op().yes();
    QCOMPARE(users.eraseCardMemory(PanelTarget::All).outcome, WalkResult::Outcome::NoRights);
    QCOMPARE(f.op().loginRequests(), 1);
    QCOMPARE(f.op().told(), QStringList{ kNoRights });
    QCOMPARE(p1->requestCount("EC"), 1);

    // The login brought up on the way restores them and the walk goes on.
    f.op().setLoginHandler([&] { f.session().logInAsAdministrator(u"admin"_s); });
    f.op().yes();
    QVERIFY(users.eraseCardMemory(PanelTarget::All).succeeded());
    QCOMPARE(p1->requestCount("EC"), 2);
}

void PanelWalkTest::clientStationReachesOnlyWatchedPanels()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    f.makeClient({ 2 });

    QCOMPARE(f.roster().open(1).turkish(), u"Bu panele Client üzerinden erişilemez!"_s);
    QCOMPARE(f.roster().selectedPosition(), 1);
    QVERIFY(f.roster().open(2).isEmpty());
    QCOMPARE(f.roster().selectedPosition(), 2);

    f.roster().select(1);
    f.op().yes();
    QCOMPARE(UserTransfer(f.context()).eraseCardMemory(PanelTarget::Selected).outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Bu panele Client üzerinden erişilemez!"_s);

    f.op().yes();
    QVERIFY(CounterOperations(f.context()).eraseRecordMemory(PanelTarget::All).succeeded());
    QCOMPARE(p1->requestCount("EM"), 0);
    QCOMPARE(p2->requestCount("EM"), 1);
}

QTEST_GUILESS_MAIN(PanelWalkTest)
#include "tst_PanelWalk.moc"
