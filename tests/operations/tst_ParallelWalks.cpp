#include "operations/panels/PanelSendLog.h"
#include "operations/records/RecordRetrieval.h"
#include "operations/users/UserTransfer.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"
#include "support/TableSendChecks.h"

#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QDateTime First(QDate(2016, 1, 30), QTime(8, 0, 0));

// The panel's card memory as "id card group" lines, in ID order.
QStringList panelUsers(SimPanel* panel)
{
    QMap<int, QString> lines;
    panel->inspect([&](const SimPanelState& state) {
        for (const SimUser& u : state.users)
            lines.insert(u.id, u"%1 %2 %3"_s.arg(u.id).arg(u.card).arg(u.group));
    });
    return lines.values();
}

// The same from Users.
QStringList storedUsers(StationFixture& f)
{
    QStringList lines;
    for (const QVariantList& row :
         f.db().rows(u"SELECT \"ID\", \"Kart ID\", \"Grup No\" FROM \"Users\" ORDER BY \"ID\""_s))
        lines << u"%1 %2 %3"_s.arg(row.at(0).toInt()).arg(row.at(1).toLongLong()).arg(row.at(2).toInt());
    return lines;
}

} // namespace

class ParallelWalksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parallelPullStoresEachRecordOnceAndErasesOnlyWholePanels_data() { TestDatabases::addEngineRows(); }
    void parallelPullStoresEachRecordOnceAndErasesOnlyWholePanels();
    void deadPanelIsGivenUpWhileTheOthersComplete();
    void changedSendTakesOnlyTheDifferenceAndTheStepFlagFollows_data() { TestDatabases::addEngineRows(); }
    void changedSendTakesOnlyTheDifferenceAndTheStepFlagFollows();
    void whatEachPanelHoldsFollowsEveryOperation();
    void sendCutOffHalfWayNotesWhatThePanelTook_data() { TestDatabases::addEngineRows(); }
    void sendCutOffHalfWayNotesWhatThePanelTook();

private:
    static int rows(StationFixture& f, int panel)
    {
        return f.db().scalar(u"SELECT COUNT(*) FROM \"AccessDatas\" WHERE \"Panel ID\" = ?"_s, { panel }).toInt();
    }
    static int storedTwice(StationFixture& f)
    {
        return f.db()
            .scalar(u"SELECT COUNT(*) FROM (SELECT \"Panel ID\", \"Tarih\", \"ID\", \"Kapi ID\" FROM \"AccessDatas\" "
                    "GROUP BY \"Panel ID\", \"Tarih\", \"ID\", \"Kapi ID\" HAVING COUNT(*) > 1) AS twice"_s)
            .toInt();
    }
};

void ParallelWalksTest::parallelPullStoresEachRecordOnceAndErasesOnlyWholePanels()
{
    KX_READY_STATION_ON_ENGINE(f);
    QList<SimPanel*> panels;
    for (int n = 1; n <= 5; ++n) {
        panels << f.addPanel(n);
        panels.last()->seedRecords(120 + n, First.addDays(n));
    }
    // Panel 3's stream breaks once: what came is stored, the panel is not erased.
    SimFault cut = faultOf(SimFault::Mode::CutStream, "DD", 1);
    cut.cutAfter = 40;
    panels.at(2)->setFault(cut);

    RecordRetrieval::Options options;
    options.target = PanelTarget::All;
    options.eraseAfter = true;
    options.scheduled = true;
    options.parallel = ParallelWalk::Options{ 3, 3 };
    RecordRetrieval::Result result = RecordRetrieval::run(f.context(), options);
    QCOMPARE(result.failures.size(), 1);
    QCOMPARE(result.failures.first().panelNumber, 3);
    QCOMPARE(result.panelsErased, 4);
    for (int n : { 1, 2, 4, 5 }) {
        QCOMPARE(rows(f, n), 120 + n);
        QCOMPARE(panels.at(n - 1)->recordCount(), 0);
    }
    QVERIFY(rows(f, 3) >= 39 && rows(f, 3) <= 40);
    QCOMPARE(panels.at(2)->recordCount(), 123);

    // The next run takes the rest of panel 3 and adds nothing twice.
    result = RecordRetrieval::run(f.context(), options);
    QVERIFY(result.failures.isEmpty());
    QCOMPARE(rows(f, 3), 123);
    QCOMPARE(panels.at(2)->recordCount(), 0);
    QCOMPARE(f.storedPassages(), 121 + 122 + 123 + 124 + 125);
    QCOMPARE(storedTwice(f), 0);
}

void ParallelWalksTest::deadPanelIsGivenUpWhileTheOthersComplete()
{
    KX_READY_STATION(f);
    SimPanel* alive1 = f.addPanel(1);
    SimPanel* dead = f.addPanel(2);
    SimPanel* alive3 = f.addPanel(3);
    for (int id = 1; id <= 30; ++id)
        f.addUser(id, 7000 + id);
    dead->setFault(faultOf(SimFault::Mode::Silent));

    QStringList told;
    UserTransfer::Unattended options;
    options.walk = { 3, 2 };
    const ParallelWalk::Result result
        = UserTransfer(f.context()).sendUnattended(options, [&](const Message& m) { told << m.turkish(); });
    // Two requests of three sends each, then nothing more for the dead panel.
    QCOMPARE(dead->requestCount("NC"), 6);
    QCOMPARE(dead->requestCount("MU"), 0);
    QCOMPARE(result.failures.size(), 1);
    QVERIFY(result.failures.first().unreachable);
    QCOMPARE(result.failures.first().panelNumber, 2);
    QVERIFY(told.contains(u"2 nolu panel cevap vermiyor, bir sonraki çalışmaya bırakıldı."_s));
    QCOMPARE(panelUsers(alive1), storedUsers(f));
    QCOMPARE(panelUsers(alive3), storedUsers(f));
    // The progress counts users over all panels, the dead one's share included, never backwards,
    // and is cleared at the end.
    const QList<QPair<int, int>> steps = f.op().progressSteps();
    QVERIFY(steps.size() > 3);
    QCOMPARE(steps.last(), qMakePair(0, 0));
    QCOMPARE(steps.at(steps.size() - 2), qMakePair(90, 90));
    for (qsizetype i = 1; i + 1 < steps.size(); ++i) {
        QCOMPARE(steps.at(i).second, 90);
        QVERIFY(steps.at(i).first > steps.at(i - 1).first);
    }
    // Only the panels that took their users are in step.
    QCOMPARE(PanelSendLog(f.db()).outOfStep(), QList<qint32>());
    QVERIFY(!PanelSendLog(f.db()).last(2, SentData::Users));
}

void ParallelWalksTest::changedSendTakesOnlyTheDifferenceAndTheStepFlagFollows()
{
    KX_READY_STATION_ON_ENGINE(f);
    QList<SimPanel*> panels{ f.addPanel(1), f.addPanel(2), f.addPanel(3) };
    for (int id = 1; id <= 20; ++id)
        f.addUser(id, 9000 + id);
    const auto sink = [](const Message&) {};
    UserTransfer::Unattended full;
    full.walk = { 2, 3 };
    QVERIFY(UserTransfer(f.context()).sendUnattended(full, sink).failures.isEmpty());
    PanelSendLog log(f.db());
    QCOMPARE(log.outOfStep(), QList<qint32>());

    // One changed, one added, one removed: every panel is out of step.
    QVERIFY(f.db().exec(u"UPDATE \"Users\" SET \"Grup No\" = 7 WHERE \"ID\" = 4"_s));
    f.addUser(21, 9021);
    QVERIFY(f.db().exec(u"DELETE FROM \"Users\" WHERE \"ID\" = 9"_s));
    QCOMPARE(log.outOfStep(), (QList<qint32>{ 1, 2, 3 }));
    // A panel that missed an earlier change gets it too: panel 3 lost user 12 meanwhile.
    panels.at(2)->modify([](SimPanelState& state) { state.users.remove(12); });
    QVERIFY(f.db().exec(u"DELETE FROM \"PanelUsers\" WHERE \"Panel No\" = 3 AND \"ID\" = 12"_s));
    for (SimPanel* p : panels)
        p->resetRequestCounts();

    UserTransfer::Unattended changed = full;
    changed.changedOnly = true;
    QVERIFY(UserTransfer(f.context()).sendUnattended(changed, sink).failures.isEmpty());
    QCOMPARE(panels.at(0)->requestCount("NC"), 2);
    QCOMPARE(panels.at(2)->requestCount("NC"), 3);
    for (SimPanel* p : panels) {
        QCOMPARE(p->requestCount("DC"), 1);
        QCOMPARE(p->requestCount("MU"), 1);
        QCOMPARE(panelUsers(p), storedUsers(f));
    }
    QCOMPARE(log.outOfStep(), QList<qint32>());
}

void ParallelWalksTest::whatEachPanelHoldsFollowsEveryOperation()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    for (int id = 1; id <= 6; ++id)
        f.addUser(id, 3000 + id);
    // A card number the panels cannot take: never sent, and never taken off a panel either.
    QVERIFY(f.db().exec(u"UPDATE \"Users\" SET \"Kart ID\" = 99999999999 WHERE \"ID\" = 6"_s));
    SimUser onPanel;
    onPanel.id = 6;
    onPanel.card = 3006;
    p1->putUser(onPanel);
    const auto sink = [](const Message&) {};
    UserTransfer::Unattended changed;
    changed.changedOnly = true;

    // A user the panel refuses is not noted as held: the next send of changes takes it again.
    p2->setFault(faultOf(SimFault::Mode::Refuse, "NC", 2));
    UserTransfer(f.context()).sendUnattended(changed, sink);
    QVERIFY(!p2->user(1));
    QVERIFY(p1->user(6));
    p1->resetRequestCounts();
    p2->resetRequestCounts();
    QVERIFY(UserTransfer(f.context()).sendUnattended(changed, sink).failures.isEmpty());
    QCOMPARE(p1->requestCount("NC"), 0);
    QCOMPARE(p1->requestCount("DC"), 0);
    QCOMPARE(p2->requestCount("NC"), 1);
    QVERIFY(p2->user(1));

    // Deleting one user and erasing a card memory from the windows' road count too.
    const qint64 third = f.db().scalar(u"SELECT \"Kayit No\" FROM \"Users\" WHERE \"ID\" = 3"_s).toLongLong();
    f.op().yes();
    QVERIFY(UserTransfer(f.context()).deleteSelectedUser(PanelTarget::All, third).succeeded());
    f.op().yes();
    f.roster().select(2);
    QVERIFY(UserTransfer(f.context()).eraseCardMemory(PanelTarget::Selected).succeeded());
    p1->resetRequestCounts();
    p2->resetRequestCounts();
    QVERIFY(UserTransfer(f.context()).sendUnattended(changed, sink).failures.isEmpty());
    QCOMPARE(p1->requestCount("NC"), 1);
    QCOMPARE(p2->requestCount("NC"), 5);
    QVERIFY(p1->user(3) && p2->user(3));
}

void ParallelWalksTest::sendCutOffHalfWayNotesWhatThePanelTook()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* whole = f.addPanel(1);
    SimPanel* cut = f.addPanel(2);
    // More users than are noted at once, so that the cut falls after a batch already written.
    constexpr int kUsers = 620;
    constexpr int kTaken = 560;
    for (int id = 1; id <= kUsers; ++id)
        f.addUser(id, 50000 + id);
    SimFault drop = faultOf(SimFault::Mode::Drop, "NC");
    drop.skip = kTaken;
    cut->setFault(drop);
    const auto sink = [](const Message&) {};
    UserTransfer::Unattended full;
    full.walk = { 2, 2 };
    const ParallelWalk::Result first = UserTransfer(f.context()).sendUnattended(full, sink);
    QCOMPARE(first.failures.size(), 1);
    QCOMPARE(first.failures.first().panelNumber, 2);
    // Noted: exactly the users the panel acknowledged, the batch written during the send and the rest.
    const QList<int> held = TableSendChecks::held(cut, &SimPanelState::users);
    QCOMPARE(held.size(), kTaken);
    QList<int> noted;
    for (const QVariantList& row :
         f.db().rows(u"SELECT \"ID\" FROM \"PanelUsers\" WHERE \"Panel No\" = 2 ORDER BY \"ID\""_s))
        noted << row.at(0).toInt();
    QCOMPARE(noted, held);
    // The panel that was cut off is out of step, the other in step.
    PanelSendLog log(f.db());
    QCOMPARE(log.outOfStep(), QList<qint32>{ 2 });

    cut->setFault(SimFault());
    whole->resetRequestCounts();
    cut->resetRequestCounts();
    UserTransfer::Unattended changed = full;
    changed.changedOnly = true;
    QVERIFY(UserTransfer(f.context()).sendUnattended(changed, sink).failures.isEmpty());
    QCOMPARE(whole->requestCount("NC"), 0);
    QCOMPARE(cut->requestCount("NC"), kUsers - kTaken);
    QCOMPARE(panelUsers(whole), storedUsers(f));
    QCOMPARE(panelUsers(cut), storedUsers(f));
    QCOMPARE(log.outOfStep(), QList<qint32>());
}

QTEST_GUILESS_MAIN(ParallelWalksTest)
#include "tst_ParallelWalks.moc"
