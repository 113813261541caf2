// Time groups sent to and erased from simulated panels, and the panels deciding access by them.

#include "operations/configuration/TimeGroupRepository.h"
#include "operations/configuration/TimeGroupTransfer.h"
#include "operations/users/UserTransfer.h"
#include "protocol/GroupCommands.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kAllDone = u"Tüm işlemler tamamlandı!"_s;
const QString kAskSelected = u"Zaman grup ayarlarını seçilen panele göndermek istiyor musunuz?"_s;
const QString kAskAll = u"Zaman grup ayarlarını tüm panellere göndermek istiyor musunuz?"_s;

TimeGroupRow hoursRow(int number, const QTime& start, const QTime& end)
{
    TimeGroupRow row;
    row.name = u"Mesai "_s + QString::number(number);
    row.record.number = number;
    row.record.restrictionType = 3;
    row.record.startTime = start;
    row.record.endTime = end;
    return row;
}

QList<int> heldTimeGroups(const SimPanel* panel)
{
    QList<int> numbers;
    panel->inspect([&](const SimPanelState& s) { numbers = s.timeGroups.keys(); });
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

// Command code and panel number of every request ("EG001").
class FrameLog
{
public:
    explicit FrameLog(StationFixture& f)
    {
        f.setSendHook(
            [this](const QByteArray& frame) { m_frames << QString::fromLatin1(frame.mid(1, 2) + frame.mid(7, 3)); });
    }
    QStringList take() { return std::exchange(m_frames, {}); }

private:
    QStringList m_frames;
};

} // namespace

class TimeGroupTransferTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyTheWalkOverAllPanelsErasesFirst_data() { TestDatabases::addEngineRows(); }
    void onlyTheWalkOverAllPanelsErasesFirst();
    void aTimeGroupNotTakenIsAskedAbout();
    void aPanelWhoseEraseFailsIsAskedAbout();
    void eraseAsksWithItsNote();
    void theSameCardIsGrantedOnceItsTimeGroupIsChangedAndSent();
};

void TimeGroupTransferTest::onlyTheWalkOverAllPanelsErasesFirst()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    const TimeGroupRepository repository(f.db());
    QVERIFY(repository.add(hoursRow(4, QTime(8, 0), QTime(17, 0))).ok);
    QVERIFY(repository.add(hoursRow(2, QTime(6, 0), QTime(14, 0))).ok);
    // What the panel held before: another number, and number 2 with other hours.
    SimTimeGroup old;
    old.type = 0;
    for (const int number : { 2, 9 }) {
        old.number = number;
        p1->modify([&](SimPanelState& s) { s.timeGroups.insert(number, old); });
    }
    FrameLog frames(f);
    TimeGroupTransfer transfer(f.context());

    f.op().yes();
    WalkResult result = transfer.send(PanelTarget::Selected);
    QVERIFY(result.succeeded());
    QCOMPARE(f.op().questions(), QStringList{ kAskSelected });
    QCOMPARE(f.op().told(), QStringList{ kAllDone });
    QCOMPARE(frames.take(), (QStringList{ u"NG001"_s, u"NG001"_s }));
    QCOMPARE(heldTimeGroups(p1), (QList<int>{ 2, 4, 9 }));
    p1->inspect([](const SimPanelState& s) {
        QCOMPARE(s.timeGroups.value(2).type, 3);
        QCOMPARE(s.timeGroups.value(2).endTime, QTime(14, 0));
    });
    QVERIFY(heldTimeGroups(p2).isEmpty());

    f.op().clearRecords();
    f.op().yes();
    result = transfer.send(PanelTarget::All);
    QVERIFY(result.succeeded());
    QCOMPARE(f.op().questions(), QStringList{ kAskAll });
    QCOMPARE(f.op().told(), QStringList{ kAllDone });
    QCOMPARE(frames.take(), (QStringList{ u"EG001"_s, u"NG001"_s, u"NG001"_s, u"EG002"_s, u"NG002"_s, u"NG002"_s }));
    QCOMPARE(heldTimeGroups(p1), (QList<int>{ 2, 4 }));
    QCOMPARE(heldTimeGroups(p2), (QList<int>{ 2, 4 }));
}

void TimeGroupTransferTest::aTimeGroupNotTakenIsAskedAbout()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    const TimeGroupRepository repository(f.db());
    for (const int number : { 1, 2, 3 })
        QVERIFY(repository.add(hoursRow(number, QTime(8, 0), QTime(17, 0))).ok);
    TimeGroupTransfer transfer(f.context());

    // Yes skips the refused one and goes on; the end is told as usual.
    panel->setFault(faultOf(SimFault::Mode::Refuse, "NG", 1));
    f.op().yes(2);
    WalkResult result = transfer.send(PanelTarget::Selected);
    QVERIFY(result.completed());
    QCOMPARE(result.membersFailed, 1);
    QCOMPARE(
        f.op().questions(),
        (QStringList{ kAskSelected, u"1 nolu zaman grubu ayarları gönderilemedi, Devam etmek istiyor musunuz?"_s }));
    QCOMPARE(f.op().lastTold(), kAllDone);
    QCOMPARE(heldTimeGroups(panel), (QList<int>{ 2, 3 }));

    // No stops there, in the walk over all panels too.
    f.op().clearRecords();
    panel->modify([](SimPanelState& s) { s.timeGroups.clear(); });
    panel->resetRequestCounts();
    panel->setFault(faultOf(SimFault::Mode::Refuse, "NG", 1));
    f.op().yes().no();
    result = transfer.send(PanelTarget::All);
    QCOMPARE(result.outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(panel->requestCount("NG"), 1);
    QVERIFY(f.op().told().isEmpty());
}

void TimeGroupTransferTest::aPanelWhoseEraseFailsIsAskedAbout()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    QVERIFY(TimeGroupRepository(f.db()).add(hoursRow(1, QTime(8, 0), QTime(17, 0))).ok);
    TimeGroupTransfer transfer(f.context());
    const QString question
        = u"1 nolu panelin zaman grup hafızası silinemedi! Sıradaki panelden devam etmek istiyor musunuz?"_s;

    // Yes: nothing is sent to that panel, the next one gets everything.
    p1->setFault(faultOf(SimFault::Mode::Drop, "EG", 1));
    f.op().yes(2);
    WalkResult result = transfer.send(PanelTarget::All);
    QCOMPARE(result.outcome, WalkResult::Outcome::Completed);
    QCOMPARE(result.panelsFailed, 1);
    QCOMPARE(f.op().questions(), (QStringList{ kAskAll, question }));
    QCOMPARE(f.op().lastTold(), kAllDone);
    QCOMPARE(p1->requestCount("NG"), 0);
    QCOMPARE(heldTimeGroups(p2), QList<int>{ 1 });

    // No: the walk ends there.
    f.op().clearRecords();
    p2->modify([](SimPanelState& s) { s.timeGroups.clear(); });
    p1->setFault(faultOf(SimFault::Mode::Drop, "EG", 1));
    f.op().yes().no();
    QCOMPARE(transfer.send(PanelTarget::All).outcome, WalkResult::Outcome::Stopped);
    QVERIFY(heldTimeGroups(p2).isEmpty());
    QVERIFY(f.op().told().isEmpty());
}

void TimeGroupTransferTest::eraseAsksWithItsNote()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    panel->modify([](SimPanelState& s) { s.timeGroups.insert(3, SimTimeGroup{}); });
    TimeGroupTransfer transfer(f.context());
    const QString question
        = u"Tüm zaman grup hafızasını silmek istediğinizden emin misiniz?\n(Not: Bu işlem 5-6 saniye sürecektir!)"_s;

    f.op().no();
    QCOMPARE(transfer.erase().outcome, WalkResult::Outcome::Declined);
    QCOMPARE(panel->totalRequests(), 0);

    f.op().yes();
    QVERIFY(transfer.erase().succeeded());
    QCOMPARE(f.op().questions().last(), question);
    QCOMPARE(f.op().lastTold(), u"İşlem başarı ile tamamlandı!"_s);
    QVERIFY(heldTimeGroups(panel).isEmpty());

    panel->setFault(faultOf(SimFault::Mode::Drop, "EG", 1));
    f.op().yes();
    QVERIFY(!transfer.erase().succeeded());
    QCOMPARE(f.op().lastTold(), u"Hata, İşlem tamamlanamadı!"_s);
}

void TimeGroupTransferTest::theSameCardIsGrantedOnceItsTimeGroupIsChangedAndSent()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    f.addGroup(3, u"Ofis"_s);
    f.addUser(7, 70007, 3);
    f.op().yes();
    QVERIFY(UserTransfer(f.context()).sendUsers(PanelTarget::Selected, UserSelection::all()).succeeded());
    // Group 3 may pass door 1 within time group 5.
    AccessGroupRecord group;
    group.groupNo = 3;
    group.doors = { true, false, false, false };
    group.doorTimeGroups = { 5, 0, 0, 0 };
    QVERIFY(f.link().ConnectPanel(u"127.0.0.1"_s, panel->port()));
    QVERIFY(SendGroup(f.link(), f.roster().selectedEntry()->address(), group).isAccepted());
    f.link().DisconnectPanel();

    const TimeGroupRepository repository(f.db());
    QVERIFY(repository.add(hoursRow(5, QTime(6, 0), QTime(9, 0))).ok);
    TimeGroupTransfer transfer(f.context());
    f.op().yes();
    QVERIFY(transfer.send(PanelTarget::Selected).succeeded());
    const QDateTime tenOClock(QDate(2016, 2, 1), QTime(10, 0));
    QCOMPARE(panel->presentCard(1, 70007, std::nullopt, tenOClock).code, PassageCode::Denied);

    QVERIFY(repository.update(hoursRow(5, QTime(8, 0), QTime(17, 0))).ok);
    f.op().yes();
    QVERIFY(transfer.send(PanelTarget::Selected).succeeded());
    QCOMPARE(panel->presentCard(1, 70007, std::nullopt, tenOClock).code, PassageCode::Granted);
}

QTEST_GUILESS_MAIN(TimeGroupTransferTest)
#include "tst_TimeGroupTransfer.moc"
