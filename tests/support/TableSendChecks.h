#pragma once

#include "support/FaultOf.h"
#include "support/StationFixture.h"

#include <QTest>
#include <algorithm>
#include <functional>

// What the sends of a numbered table (access groups, time groups) to the panels have in common:
// a member the panel does not take is asked about, and the erase of the selected panel's table
// asks first. Table is the panel's own copy of it (&SimPanelState::groups, ...).
namespace TableSendChecks {

template <typename Table> QList<int> held(const SimPanel* panel, Table SimPanelState::*table)
{
    QList<int> numbers;
    panel->inspect([&](const SimPanelState& s) { numbers = (s.*table).keys(); });
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

// Members 1-3 are stored and the panel refuses the first once: Yes to its question skips it and
// the end is told as usual; No stops the walk over all panels there.
template <typename Table>
void refusedMemberIsAskedAbout(StationFixture& f, SimPanel* panel, Table SimPanelState::*table, const QByteArray& code,
                               const QString& question, const std::function<WalkResult(PanelTarget)>& send)
{
    panel->setFault(faultOf(SimFault::Mode::Refuse, code, 1));
    f.op().yes(2);
    const WalkResult result = send(PanelTarget::Selected);
    QVERIFY(result.completed());
    QCOMPARE(result.membersFailed, 1);
    QCOMPARE(f.op().questions().value(1), question);
    QCOMPARE(f.op().lastTold(), QStringLiteral("Tüm işlemler tamamlandı!"));
    QCOMPARE(held(panel, table), (QList<int>{ 2, 3 }));

    f.op().clearRecords();
    panel->modify([&](SimPanelState& s) { (s.*table).clear(); });
    panel->resetRequestCounts();
    panel->setFault(faultOf(SimFault::Mode::Refuse, code, 1));
    f.op().yes().no();
    QCOMPARE(send(PanelTarget::All).outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(panel->requestCount(code), 1);
    QVERIFY(f.op().told().isEmpty());
}

// The erase asks with its note and empties the panel's table (No to the question is the walk's test).
template <typename Table>
void eraseAsksWithItsNote(StationFixture& f, SimPanel* panel, Table SimPanelState::*table, const QString& question,
                          const std::function<WalkResult()>& erase)
{
    panel->modify([&](SimPanelState& s) { (s.*table).insert(4, {}); });
    f.op().yes();
    QVERIFY(erase().succeeded());
    QCOMPARE(f.op().questions().last(), question + QStringLiteral("\n(Not: Bu işlem 5-6 saniye sürecektir!)"));
    QCOMPARE(f.op().lastTold(), QStringLiteral("İşlem başarı ile tamamlandı!"));
    QVERIFY(held(panel, table).isEmpty());
}

} // namespace TableSendChecks
