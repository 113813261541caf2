#include "operations/live/StatusListener.h"
#include "operations/live/StatusRefresh.h"
#include "operations/panels/PanelSearch.h"
#include "support/ReadyStation.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The status refresh and the panel search over UDP on loopback, against simulated panels.
class StatusSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refreshMarksUnknownThenTakesAnswers();
    void searchReplacesThePanelListWhenPanelsAnswer();

private:
    static PanelSearch::Timing quick() { return { 2, 150 }; }
};

void StatusSearchTest::refreshMarksUnknownThenTakesAnswers()
{
    KX_READY_STATION(f);
    SimPanel* p1 = f.addPanel(1);
    f.addRow(2, 0x1002, u"127.0.0.1"_s, StationFixture::deadPort()); // never answers
    f.addRow(3, 0, u"127.0.0.1"_s, 1); // unusable: left alone
    p1->modify([](SimPanelState& s) {
        s.doorStates = { 1, 0, 0, 0 };
        s.lineStates = { 1, 1, 0, 1 };
    });
    DoorStatusTable& table = f.roster().doorStatus();
    for (int position = 1; position <= 3; ++position)
        table.setCell(position, 1, { 0, 1 });

    StatusListener listener(f.roster(), f.context().udp);
    QVERIFY(listener.start());
    QSignalSpy answers(&listener, &StatusListener::statusReceived);
    QVERIFY(StatusRefresh::run(f.roster(), listener));
    QCOMPARE(table.cell(3, 1), DoorStatusTable::Cell({ 0, 1 }));
    QVERIFY(answers.wait(3000));
    QCOMPARE(answers.first().at(0).toInt(), 1);
    QCOMPARE(table.cell(1, 1), DoorStatusTable::Cell({ 1, 1 }));
    QCOMPARE(table.cell(1, 3), DoorStatusTable::Cell({ 0, 0 }));
    QCOMPARE(table.cell(2, 1), DoorStatusTable::Cell({ 2, 3 }));

    // Pieces of a datagram are read one by one; noise and strangers are passed over.
    listener.takeDatagram("noise$GMS??$XY**");
    QCOMPARE(answers.size(), 1);
}

void StatusSearchTest::searchReplacesThePanelListWhenPanelsAnswer()
{
    KX_READY_STATION(f);
    f.addRow(9, 0x1009, u"127.0.0.9"_s, 5000); // gone after the search
    f.op().yes();
    const WalkResult none = PanelSearch(f.context(), quick()).run();
    QVERIFY(none.completed());
    QCOMPARE(f.op().told(), QStringList{ u"Hiçbir panel cevap vermedi. Panel listesi değiştirilmedi."_s });
    QCOMPARE(f.roster().count(), 1);

    SimPanelConfig c;
    for (int number : { 4, 2 }) {
        c.number = number;
        c.serial = 0x2000 + number;
        QVERIFY(f.sim().addPanel(c));
    }
    // Told what answered, the person may still keep the list and the names typed into it.
    f.op().clearRecords();
    f.op().yes().no();
    QCOMPARE(PanelSearch(f.context(), quick()).run().outcome, WalkResult::Outcome::Declined);
    const QString shown = f.op().questions().last();
    QVERIFY2(shown.startsWith(u"2 panel bulundu:\nPanel "_s), qPrintable(shown));
    QVERIFY(shown.contains(u"\nPanel 2 ("_s) && shown.contains(u"\nPanel 4 ("_s));
    QVERIFY(shown.endsWith(u"\nPanel listesi ve panel adları bulunan panellerle değiştirilsin mi?"_s));
    QCOMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"PanelSettings\""_s).toInt(), 1);

    f.op().clearRecords();
    f.op().yes(2);
    QList<SearchAnswer> found;
    const WalkResult r = PanelSearch(f.context(), quick()).run(&found);
    QVERIFY(r.completed());
    QCOMPARE(f.op().questions().first(),
             u"Sistemdeki paneller bulunarak mevcut panel listesi değiştirilecek. Onaylıyor musunuz?"_s);
    QCOMPARE(f.op().statusLines(), QStringList({ u"Searching... 1"_s, u"Searching... 0"_s, QString() }));
    QVERIFY(f.op().progressSteps().contains(qMakePair(2, 2)));
    QCOMPARE(f.roster().count(), 2);
    QCOMPARE(f.roster().entryForPanel(4)->serial, 0x2004);
    QCOMPARE(f.roster().selectedPosition(), 1);
    QCOMPARE(f.db().scalar(u"SELECT COUNT(*) FROM \"PanelSettings\""_s).toInt(), 2);

    // Only an administrator on the server searches.
    f.op().clearRecords();
    f.session().logOut();
    QCOMPARE(PanelSearch(f.context(), quick()).run().outcome, WalkResult::Outcome::NoRights);
    f.makeClient({ 1 });
    QCOMPARE(PanelSearch(f.context(), quick()).run().outcome, WalkResult::Outcome::Refused);
    QCOMPARE(f.op().lastTold(), u"Bu işlem ancak server üzerinde yapılabilir"_s);
    QVERIFY(f.op().questions().isEmpty());
}

QTEST_GUILESS_MAIN(StatusSearchTest)
#include "tst_StatusSearch.moc"
