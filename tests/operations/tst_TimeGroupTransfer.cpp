// Time groups sent to and erased from simulated panels. That the panels decide by them is the
// simulator's round trip test.

#include "operations/configuration/TimeGroupRepository.h"
#include "operations/configuration/TimeGroupTransfer.h"
#include "operations/panels/PanelSendLog.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"
#include "support/TableSendChecks.h"

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

} // namespace

class TimeGroupTransferTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyTheWalkOverAllPanelsErasesFirst_data() { TestDatabases::addEngineRows(); }
    void onlyTheWalkOverAllPanelsErasesFirst();
    void questionsOfTheSendAndTheErase();
};

void TimeGroupTransferTest::onlyTheWalkOverAllPanelsErasesFirst()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    const TimeGroupRepository repository(f.db());
    QVERIFY(repository.add(hoursRow(4, QTime(8, 0), QTime(17, 0))).ok);
    QVERIFY(repository.add(hoursRow(2, QTime(6, 0), QTime(14, 0))).ok);
    // The panel held a number the station no longer has.
    p1->modify([](SimPanelState& s) { s.timeGroups.insert(9, SimTimeGroup{}); });
    TimeGroupTransfer transfer(f.context());
    const auto held = [](SimPanel* panel) { return TableSendChecks::held(panel, &SimPanelState::timeGroups); };

    // The selected panel: sent over what it held, nothing erased.
    f.op().yes();
    QVERIFY(transfer.send(PanelTarget::Selected).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ kAskSelected });
    QCOMPARE(f.op().told(), QStringList{ kAllDone });
    QCOMPARE(p1->requestCount("EG"), 0);
    QCOMPARE(held(p1), (QList<int>{ 2, 4, 9 }));
    QVERIFY(held(p2).isEmpty());

    // Every panel: each erased first, then sent.
    f.op().clearRecords();
    f.op().yes();
    QVERIFY(transfer.send(PanelTarget::All).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ kAskAll });
    QCOMPARE(held(p1), (QList<int>{ 2, 4 }));
    QCOMPARE(held(p2), (QList<int>{ 2, 4 }));
    // What is sent is the stored time group.
    p2->inspect([](const SimPanelState& s) { QCOMPARE(s.timeGroups.value(2).endTime, QTime(14, 0)); });
    // Panels that took them all are noted as holding them, until they are edited.
    const PanelSendLog log(f.db());
    QCOMPARE(log.outOfStep(), QList<qint32>());
    QVERIFY(repository.update(hoursRow(4, QTime(8, 0), QTime(18, 0))).ok);
    QCOMPARE(log.outOfStep(), (QList<qint32>{ 1, 2 }));
}

void TimeGroupTransferTest::questionsOfTheSendAndTheErase()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    const TimeGroupRepository repository(f.db());
    for (const int number : { 1, 2, 3 })
        QVERIFY(repository.add(hoursRow(number, QTime(8, 0), QTime(17, 0))).ok);
    TimeGroupTransfer transfer(f.context());
    TableSendChecks::refusedMemberIsAskedAbout(
        f, p1, &SimPanelState::timeGroups, "NG",
        u"1 nolu zaman grubu ayarları gönderilemedi, Devam etmek istiyor musunuz?"_s,
        [&](PanelTarget target) { return transfer.send(target); });
    TableSendChecks::eraseAsksWithItsNote(f, p1, &SimPanelState::timeGroups,
                                          u"Tüm zaman grup hafızasını silmek istediğinizden emin misiniz?"_s,
                                          [&] { return transfer.erase(); });

    // A panel whose erase fails is asked about.
    f.op().clearRecords();
    p1->resetRequestCounts();
    const QString question
        = u"1 nolu panelin zaman grup hafızası silinemedi! Sıradaki panelden devam etmek istiyor musunuz?"_s;
    const auto held = [](SimPanel* panel) { return TableSendChecks::held(panel, &SimPanelState::timeGroups); };

    // Yes: nothing is sent to that panel, the next one gets everything.
    p1->setFault(faultOf(SimFault::Mode::Drop, "EG", 1));
    f.op().yes(2);
    const WalkResult result = transfer.send(PanelTarget::All);
    QCOMPARE(result.outcome, WalkResult::Outcome::Completed);
    QCOMPARE(result.panelsFailed, 1);
    QCOMPARE(f.op().questions(), (QStringList{ kAskAll, question }));
    QCOMPARE(p1->requestCount("NG"), 0);
    QCOMPARE(held(p2), (QList<int>{ 1, 2, 3 }));

    // No: the walk ends there.
    f.op().clearRecords();
    p2->modify([](SimPanelState& s) { s.timeGroups.clear(); });
    p1->setFault(faultOf(SimFault::Mode::Drop, "EG", 1));
    f.op().yes().no();
    QCOMPARE(transfer.send(PanelTarget::All).outcome, WalkResult::Outcome::Stopped);
    QVERIFY(held(p2).isEmpty());
    QVERIFY(f.op().told().isEmpty());
}

QTEST_GUILESS_MAIN(TimeGroupTransferTest)
#include "tst_TimeGroupTransfer.moc"
