// Group calendars, programmed door slots and daily approvals between the database and simulated
// panels; every configuration send refusing an empty table.

#include "../protocol/ScriptedPanel.h"
#include "operations/configuration/DailyPermissionRepository.h"
#include "operations/configuration/DailyPermissionTransfer.h"
#include "operations/configuration/GroupCalendarRepository.h"
#include "operations/configuration/GroupCalendarTransfer.h"
#include "operations/configuration/GroupTransfer.h"
#include "operations/configuration/ProgrammedSlotRepository.h"
#include "operations/configuration/ProgrammedSlotTransfer.h"
#include "operations/configuration/TimeGroupTransfer.h"
#include "operations/schedule/ApprovalResetRepository.h"
#include "operations/schedule/DailyScheduler.h"
#include "support/FaultOf.h"
#include "support/ReadyStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kAllDone = u"Tüm işlemler tamamlandı!"_s;

ProgrammedSlot slotOf(int weekday, int number, const QTime& start, const QTime& end, std::array<bool, 8> doors,
                      std::array<bool, 8> relays)
{
    ProgrammedSlot s;
    s.weekday = weekday;
    s.slot = number;
    s.active = true;
    s.start = start;
    s.end = end;
    s.doors = doors;
    s.relays = relays;
    return s;
}

bool sameSlot(const ProgrammedSlot& a, const ProgrammedSlot& b)
{
    return a.weekday == b.weekday && a.slot == b.slot && a.active == b.active && a.start == b.start && a.end == b.end
        && a.doors == b.doors && a.relays == b.relays;
}

QStringList codesSent(SimPanel* panel)
{
    QStringList codes;
    for (const QByteArray& frame : panel->recentRequests())
        codes << QString::fromLatin1(frame.mid(1, 2));
    return codes;
}

} // namespace

class CalendarTransferTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void calendarsAndSlotsGoAsStoredAndNineIsKeptBack_data() { TestDatabases::addEngineRows(); }
    void calendarsAndSlotsGoAsStoredAndNineIsKeptBack();
    void aSlotAnswerCutShortLeavesItsRowAlone();
    void emptyTablesStopBeforeAnyConnection();
    void approvalsAreSentPerMemberAndResetAtNight_data() { TestDatabases::addEngineRows(); }
    void approvalsAreSentPerMemberAndResetAtNight();
};

void CalendarTransferTest::calendarsAndSlotsGoAsStoredAndNineIsKeptBack()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* p1 = f.addPanel(1);
    SimPanel* p2 = f.addPanel(2);
    f.addGroup(3, u"Sabah"_s);
    const GroupCalendarRepository calendars(f.db());
    GroupCalendarRow hours;
    hours.record = { 2, u" İki Saat Arası "_s, {}, {}, QTime(8, 0), QTime(17, 30), 3, 4, 5 };
    hours.name = u"Vardiya"_s;
    QVERIFY(calendars.add(hours).ok);
    GroupCalendarRow dates;
    dates.record
        = { 1, u"İki Tarih Arası"_s, QDate(2016, 1, 1), QDate(2016, 12, 31), QTime(7, 0), QTime(19, 0), 1, 2, 3 };
    QVERIFY(calendars.add(dates).ok);
    // Stored behind the repository's back: a number the panels do not keep.
    QVERIFY(f.db().insert(u"TimeZoneCalendar"_s, { u"Grup Takvimi No"_s, u"Grup Takvimi Tipi"_s }, { 9, 1 }));
    // Refused whole: nothing half-stored.
    GroupCalendarRow bad = dates;
    bad.record.number = 4;
    bad.record.date2 = QDate();
    QCOMPARE(calendars.add(bad).message.turkish(), u"Geçersiz tarih!"_s);
    bad.record.number = 9;
    QCOMPARE(calendars.add(bad).message.turkish(), u"Geçiş grup takvimi numarası 1-8 arasında olmalıdır!"_s);

    const QList<GroupCalendarRow> listed = calendars.list();
    QCOMPARE(listed.size(), 2);
    QCOMPARE(std::tuple(listed.at(0).groupName3, listed.at(1).record.typeText),
             std::tuple(u"Sabah"_s, u"İki Saat Arası"_s));

    GroupCalendarTransfer transfer(f.context());
    f.op().yes();
    QVERIFY(transfer.send(PanelTarget::All).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"Geçiş grup takvimini tüm panellere göndermek istiyor musunuz?"_s });
    QCOMPARE(f.op().lastTold(), kAllDone);
    const QList<QByteArray> frames = p2->recentRequests();
    QCOMPARE(frames.size(), 2);
    QCOMPARE(frames.at(0).mid(10, 40), QByteArray("11070019000101201631122016000100020003**"));
    QCOMPARE(frames.at(1).mid(10, 40), QByteArray("20080017300000000000000000000300040005**"));

    // A calendar the panel refuses is asked about by its number; No stops the walk.
    p1->setFault(faultOf(SimFault::Mode::Refuse, "CZ", 1));
    f.op().clearRecords();
    f.op().yes().no();
    QCOMPARE(transfer.send(PanelTarget::Selected).outcome, WalkResult::Outcome::Stopped);
    QCOMPARE(f.op().questions().value(1), u"1 nolu geçiş grup takvimi gönderilemedi, Devam etmek istiyor musunuz?"_s);

    // Programmed slots: what is sent and read back equals what was stored.
    f.op().clearRecords();
    p1->resetRequestCounts();
    ProgrammedSlotRepository programme(f.db());
    QVERIFY(programme.ensurePanel(1).ok);
    QVERIFY(programme.ensurePanel(1).ok); // a second time adds nothing
    QCOMPARE(programme.panel(1).size(), 7 * 16);

    // Door 5 and relay 6 are kept but never travel.
    const ProgrammedSlot monday = slotOf(1, 1, QTime(8, 0), QTime(8, 15), { true, false, true, false, true },
                                         { false, false, false, true, false, true });
    const ProgrammedSlot friday = slotOf(5, 16, QTime(23, 0), QTime(23, 59), { false, true }, { true });
    QVERIFY(programme.store(1, { monday, friday }).ok);
    // Out of range: refused whole, the valid slot beside it is not stored either.
    ProgrammedSlot late = friday;
    late.slot = 17;
    ProgrammedSlot changed = monday;
    changed.active = false;
    QCOMPARE(programme.store(1, { changed, late }).message.turkish(),
             u"Zaman dilimi numarası 1-16 arasında olmalıdır!"_s);
    QVERIFY(sameSlot(programme.day(1, 1).at(0), monday));

    f.op().yes();
    QVERIFY(ProgrammedSlotTransfer(f.context()).send().succeeded());
    QCOMPARE(f.op().questions(),
             QStringList{ u"Programlı kapı işlemlerini seçilen panele göndermek istiyor musunuz?"_s });
    QCOMPARE(f.op().lastTold(), kAllDone);
    QCOMPARE(p1->requestCount("ZW"), 7 * 16);
    const QList<QByteArray> sent = p1->recentRequests();
    QVERIFY(std::any_of(sent.begin(), sent.end(), [](const QByteArray& frame) {
        return frame.mid(10).startsWith("1011080008151010000000010000**");
    }));

    // The database forgets; reading back brings the panel's slots, doors and relays 5-8 stay.
    ProgrammedSlot forgotten = slotOf(1, 1, QTime(0, 0), QTime(0, 0), { false, false, false, false, true },
                                      { false, false, false, false, false, true });
    forgotten.active = false;
    ProgrammedSlot fridayForgotten = friday;
    fridayForgotten.active = false;
    fridayForgotten.doors = {};
    QVERIFY(programme.store(1, { forgotten, fridayForgotten }).ok);
    f.op().clearRecords();
    f.op().yes();
    QVERIFY(ProgrammedSlotTransfer(f.context()).receive().succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"Seçilen panel için programlanmış işlemleri almak istiyor musunuz?"_s });
    QCOMPARE(p1->requestCount("ZR"), 7 * 16);
    QVERIFY(sameSlot(programme.day(1, 1).at(0), monday));
    QVERIFY(sameSlot(programme.day(1, 5).at(15), friday));

    // Copy from Monday: position by position, Monday itself refused and unchanged.
    QVERIFY(programme.copyFromMonday(1, 3).ok);
    ProgrammedSlot wednesday = monday;
    wednesday.weekday = 3;
    QVERIFY(sameSlot(programme.day(1, 3).at(0), wednesday));
    QVERIFY(!programme.copyFromMonday(1, 1).ok);
    QVERIFY(sameSlot(programme.day(1, 1).at(0), monday));
}

void CalendarTransferTest::aSlotAnswerCutShortLeavesItsRowAlone()
{
    KX_READY_STATION(f);
    // Slot 1 answers whole; slot 2 answers "O" but its fields stop short of the end.
    ScriptedPanel scripted([](const QByteArray& request) {
        const QByteArray head = '$' + request.mid(1, 9);
        if (request.mid(10, 3) == "101")
            return QList<ScriptedPanel::Write>{ { 0, head + "O1011070009301000000010000000**" } };
        return QList<ScriptedPanel::Write>{ { 0, head + "O10210800081510**" } };
    });
    f.addRow(1, 0x12AB, u"127.0.0.1"_s, scripted.port());
    f.reloadRoster();
    ProgrammedSlotRepository programme(f.db());
    const ProgrammedSlot first = slotOf(1, 1, QTime(6, 0), QTime(6, 30), { false, true, true, true, true }, {});
    const ProgrammedSlot second = slotOf(1, 2, QTime(12, 0), QTime(13, 0), { true }, { true, true });
    QVERIFY(programme.store(1, { first, second }).ok);

    f.op().yes().yes();
    const WalkResult result = ProgrammedSlotTransfer(f.context()).receive();
    QCOMPARE(result.membersFailed, 1);
    QCOMPARE(f.op().questions().value(1),
             u"1 gününe ilişkin programlanmış işlemler alınamadı, Devam etmek istiyor musunuz?"_s);
    const QList<ProgrammedSlot> stored = programme.day(1, 1);
    ProgrammedSlot expected = slotOf(1, 1, QTime(7, 0), QTime(9, 30), { true, false, false, false, true }, { true });
    QVERIFY(sameSlot(stored.at(0), expected));
    QVERIFY(sameSlot(stored.at(1), second));
}

void CalendarTransferTest::emptyTablesStopBeforeAnyConnection()
{
    KX_READY_STATION(f);
    SimPanel* panel = f.addPanel(1);
    const auto refused = [&](const std::function<WalkResult()>& run, const QString& message) {
        f.op().clearRecords();
        f.op().yes();
        QCOMPARE(run().outcome, WalkResult::Outcome::Refused);
        QCOMPARE(f.op().lastTold(), message);
    };
    refused([&] { return GroupTransfer(f.context()).send(PanelTarget::Selected); }, u"Geçiş grup listesi boş!"_s);
    refused([&] { return GroupTransfer(f.context()).send(PanelTarget::All); }, u"Grup listesi boş"_s);
    f.addGroup(5, u"Boş"_s); // a group without members
    refused([&] { return GroupCalendarTransfer(f.context()).send(PanelTarget::All); },
            u"Geçiş grup takvimi listesi boş!"_s);
    refused([&] { return ProgrammedSlotTransfer(f.context()).send(); }, u"Programlanmış işlemler tablosu boş"_s);
    refused([&] { return ProgrammedSlotTransfer(f.context()).receive(); }, u"Programlanmış işlemler tablosu boş"_s);
    refused([&] { return DailyPermissionTransfer(f.context()).send(5); }, u"Kayıt yok!"_s);
    for (const PanelTarget target : { PanelTarget::Selected, PanelTarget::All })
        refused([&] { return TimeGroupTransfer(f.context()).send(target); }, u"Zaman grup listesi boş!"_s);
    QCOMPARE(panel->totalRequests(), 0);
}

void CalendarTransferTest::approvalsAreSentPerMemberAndResetAtNight()
{
    KX_READY_STATION_ON_ENGINE(f);
    SimPanel* panel = f.addPanel(1);
    f.addGroup(7, u"Taşeron"_s);
    QVERIFY(f.db().exec(u"UPDATE \"GroupsMaster\" SET \"Gunluk Onay Gerekli\" = ? WHERE \"Grup No\" = ?"_s, { 1, 7 }));
    f.addUser(21, 5021, 7);
    f.addUser(22, 5022, 7);
    f.addUser(30, 5030, 8);
    // Whom the panel holds approved (that they then pass is the simulator's round trip test).
    const auto approved = [panel] {
        QList<int> ids;
        panel->inspect([&](const SimPanelState& s) { ids = s.dailyApproved.values(); });
        return ids;
    };

    const DailyPermissionRepository approvals(f.db());
    QCOMPARE(approvals.groupName(7), u"Taşeron"_s);
    QVERIFY(approvals.setAll(7, true));
    QList<DailyPermissionRepository::Member> members = approvals.members(7);
    members[1].approved = false;
    QVERIFY(approvals.store(members));

    f.op().yes();
    QVERIFY(DailyPermissionTransfer(f.context()).send(7).succeeded());
    QCOMPARE(f.op().questions(), QStringList{ u"Kullanıcı Günlük Geçiş Onay listesini göndermek istiyor musunuz?"_s });
    QCOMPARE(f.op().lastTold(), u"İşlem Tamamlandı!"_s);
    QCOMPARE(codesSent(panel), (QStringList{ u"CS"_s, u"CS"_s }));
    QCOMPARE(approved(), QList<int>{ 21 });

    // The nightly reset, when set, takes the approvals back in the database and on the panels;
    // only a server station runs it, at its time.
    ApprovalResetRepository resetSettings(f.db());
    QVERIFY(resetSettings.save({ true, QTime(3, 0), true }));
    ApprovalResetPlan plan;
    QVERIFY(resetSettings.load(&plan));
    DailyScheduler scheduler;
    scheduler.setApprovalReset(plan);
    const QDateTime early(QDate(2026, 3, 2), QTime(2, 59, 58));
    QVERIFY(scheduler.tick(early).isEmpty());
    scheduler.setServer(true);
    QCOMPARE(scheduler.tick(early), QList{ ScheduledRun::ApprovalReset });
    QVERIFY(DailyPermissionTransfer(f.context()).reset(plan.toPanels).completed());
    QVERIFY(approved().isEmpty());
    QCOMPARE(approvals.members(7).at(0).approved, false);
}

QTEST_GUILESS_MAIN(CalendarTransferTest)
#include "tst_CalendarTransfer.moc"
