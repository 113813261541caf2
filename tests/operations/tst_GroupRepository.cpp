// Access groups in the database on both engines: the next number and its limit, a new group with
// one row per panel slot, rows of removed panels hidden, refusals in the station's words, and no
// change left half done when the database refuses part of it.

#include "operations/configuration/GroupRepository.h"
#include "support/TestDatabases.h"

#include <QSqlQuery>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;
const QString kBadNumber = u"Grup numarası 1-1280 arasında sayısal bir ifade olmalıdır!"_s;

void addPanelRow(Database& db, int order, int number, int serial)
{
    QVERIFY(db.insert(
        u"PanelSettings"_s,
        { u"Sira No"_s, u"Panel ID"_s, u"Seri No"_s, u"Panel Adi"_s, u"Kapi2 Adi"_s, u"Panel IP1"_s, u"Panel IP4"_s,
          u"Panel TCP Port"_s },
        { order, number, serial, QString(u"Bina "_s + QString::number(number)), u"Otopark"_s, 127, 1, 4000 + number }));
}

int detailCount(const Database& db, int group)
{
    return db.scalar(u"SELECT COUNT(*) FROM \"GroupsDetail\" WHERE \"Grup No\" = ?"_s, { group }).toInt();
}

// A group with its number and name, everything else as a new group has it.
GroupMasterRow master(int number, const QString& name)
{
    return { .number = number, .name = name };
}

// Makes the database refuse any change of that kind to the detail table, as a failing disk or a
// lost server would part way through a change.
void refuseDetail(Database& db, const QString& event)
{
    QSqlQuery q(db.connection());
    const QString name = u"refuse_detail_"_s + event.toLower();
    if (db.isSQLite()) {
        QVERIFY2(q.exec(u"CREATE TRIGGER "_s + name + u" BEFORE "_s + event
                        + u" ON \"GroupsDetail\" BEGIN SELECT RAISE(ABORT, 'refused'); END"_s),
                 qPrintable(q.lastError().text()));
        return;
    }
    QVERIFY2(q.exec(u"CREATE OR REPLACE FUNCTION refuse_change() RETURNS trigger LANGUAGE plpgsql AS "
                    "$$ BEGIN RAISE EXCEPTION 'refused'; END $$"_s),
             qPrintable(q.lastError().text()));
    QVERIFY2(q.exec(u"CREATE TRIGGER "_s + name + u" BEFORE "_s + event
                    + u" ON \"GroupsDetail\" FOR EACH ROW EXECUTE FUNCTION refuse_change()"_s),
             qPrintable(q.lastError().text()));
}

void allowDetail(Database& db, const QString& event)
{
    QSqlQuery q(db.connection());
    const QString name = u"refuse_detail_"_s + event.toLower();
    const QString drop = u"DROP TRIGGER "_s + name;
    QVERIFY(q.exec(db.isSQLite() ? drop : drop + u" ON \"GroupsDetail\""_s));
}
} // namespace

class GroupRepositoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewGroupHasOneRowPerPanelSlot_data() { TestDatabases::addEngineRows(); }
    void aNewGroupHasOneRowPerPanelSlot();
    void numbersRefusalsAndNothingLeftHalfDone_data() { TestDatabases::addEngineRows(); }
    void numbersRefusalsAndNothingLeftHalfDone();
};

void GroupRepositoryTest::aNewGroupHasOneRowPerPanelSlot()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    addPanelRow(db, 1, 2, 0x1202);
    addPanelRow(db, 2, 1, 0x1201);
    addPanelRow(db, 3, 3, 0); // a slot not in use
    const GroupRepository groups(db);

    QList<GroupDetailRow> fresh = groups.freshDetails();
    QCOMPARE(fresh.size(), 2);
    QCOMPARE(fresh.at(0).panelNo, 1);
    QCOMPARE(fresh.at(1).doorNames[1], u"Otopark"_s);

    // A row left behind by an earlier group of the same number goes.
    QVERIFY(db.insert(u"GroupsDetail"_s, { u"Grup No"_s, u"Panel No"_s, u"Seri No"_s, u"Kapi1"_s }, { 5, 9, 77, 1 }));
    fresh[1].doors = { true, false, true, false };
    fresh[1].doorTimeGroups = { 3, 0, 0, 12 };
    fresh[1].doorZones = { 2, 1, 1, 7 };
    QVERIFY(groups.add(master(5, u"Ofis"_s), { fresh.at(1) }).ok);
    QCOMPARE(detailCount(db, 5), GroupRepository::PanelSlots);
    QList<GroupDetailRow> shown = groups.details(5);
    QCOMPARE(shown.size(), 2);
    QCOMPARE(shown.at(0).doors, (std::array<bool, 4>{}));
    QCOMPARE(shown.at(0).doorZones, (std::array<int, 4>{ 1, 1, 1, 1 }));
    QCOMPARE(std::tuple(shown.at(1).groupName, shown.at(1).panelName), std::tuple(u"Ofis"_s, u"Bina 2"_s));
    QCOMPARE(shown.at(1).doors, (std::array<bool, 4>{ true, false, true, false }));
    QCOMPARE(shown.at(1).doorTimeGroups, (std::array<int, 4>{ 3, 0, 0, 12 }));
    QCOMPARE(shown.at(1).doorZones, (std::array<int, 4>{ 2, 1, 1, 7 }));

    // Rows of a removed panel (serial 0) or beyond the 64 slots are neither listed nor sent.
    QVERIFY(db.exec(u"UPDATE \"GroupsDetail\" SET \"Seri No\" = 0 WHERE \"Panel No\" = 1"_s));
    QVERIFY(db.insert(u"GroupsDetail"_s, { u"Grup No"_s, u"Panel No"_s, u"Seri No"_s }, { 5, 65, 0x1265 }));
    QCOMPARE(groups.details(5).size(), 1);
    QVERIFY(groups.detailsForPanel(5, 1).isEmpty());
    QVERIFY(groups.detailsForPanel(5, 65).isEmpty());
    QCOMPARE(groups.detailsForPanel(5, 2).size(), 1);

    // A group stored without rows (by an older station) gets them with its next store; edits of
    // one panel leave the others' doors alone, and the name follows into every row.
    QVERIFY(db.insert(u"GroupsMaster"_s, { u"Grup No"_s, u"Grup Adi"_s }, { 8, u"Eski"_s }));
    QVERIFY(groups.update(master(8, u"Depo"_s)).ok);
    QCOMPARE(detailCount(db, 8), GroupRepository::PanelSlots);
    GroupDetailRow edit = groups.details(8).at(0);
    edit.doors[3] = true;
    QVERIFY(groups.storeDetails({ edit }).ok);
    GroupMasterRow renamed = master(8, u"Depo B"_s);
    renamed.accessCount = 300; // kept as typed; fitted only when sent
    QVERIFY(groups.update(renamed).ok);
    QCOMPARE(groups.find(8)->accessCount, 300);
    shown = groups.details(8);
    QCOMPARE(shown.at(0).doors, (std::array<bool, 4>{ false, false, false, true }));
    QCOMPARE(shown.at(1).groupName, u"Depo B"_s);
}

void GroupRepositoryTest::numbersRefusalsAndNothingLeftHalfDone()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    addPanelRow(db, 1, 1, 0x1201);
    const GroupRepository groups(db);
    QVERIFY(groups.add(master(4, u"Ofis"_s)).ok);

    // The rows cannot be written: the group is not kept without them.
    const QString failed = u"Çoklu hatalı işlem yürütüldü, Tekrar deneyiniz!"_s;
    refuseDetail(db, u"INSERT"_s);
    QCOMPARE(groups.add(master(7, u"Yarım"_s)).message.turkish(), failed);
    QVERIFY(!groups.find(7));
    QCOMPARE(detailCount(db, 7), 0);
    allowDetail(db, u"INSERT"_s);

    // The rows cannot be changed: neither is the group.
    refuseDetail(db, u"UPDATE"_s);
    GroupMasterRow renamed = master(4, u"Ofis 2"_s);
    renamed.insideCount = 12;
    QCOMPARE(groups.update(renamed).message.turkish(), failed);
    QCOMPARE(*groups.find(4), master(4, u"Ofis"_s));
    allowDetail(db, u"UPDATE"_s);

    // The rows cannot be deleted: the group stays.
    refuseDetail(db, u"DELETE"_s);
    QCOMPARE(groups.remove(4).message.turkish(),
             u"Sınırlama seçenekleri silinemediği için grup silinemedi, Tekrar deneyiniz!"_s);
    QVERIFY(groups.find(4));
    QCOMPARE(detailCount(db, 4), GroupRepository::PanelSlots);
    allowDetail(db, u"DELETE"_s);
    QVERIFY(groups.remove(4).ok);
    QVERIFY(!groups.find(4));
    QCOMPARE(detailCount(db, 4), 0);

    // Numbers and refusals.
    QCOMPARE(groups.nextNumber().number, 1);

    for (const int number : { 0, 1281 })
        QCOMPARE(groups.add(master(number, u"Dışarıda"_s)).message.turkish(), kBadNumber);
    for (const int number : { 1280, 1 })
        QVERIFY(groups.add(master(number, u"Sınır"_s)).ok);
    GroupRepository::Result r = groups.add(master(1, u"Yine"_s));
    QCOMPARE(r.message.turkish(), kDuplicate);
    // Listed in number order, the first name kept.
    const QList<GroupRepository::Row> rows = groups.list();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(std::tuple(rows.at(0).number, rows.at(0).name), std::tuple(1, u"Sınır"_s));

    QCOMPARE(groups.nextNumber().message.turkish(), u"Grup No değeri 1280'i geçemez!"_s);

    r = groups.update(master(77, u"Yok"_s));
    QCOMPARE(r.message.turkish(), u"77 nolu grup bulunamadı."_s);
    QCOMPARE(detailCount(db, 77), 0);

    QVERIFY(groups.remove(1280).ok);
    QCOMPARE(groups.nextNumber().number, 2);
    QCOMPARE(groups.remove(1280).message.turkish(), u"1280 nolu grup bulunamadı."_s);

    // A repository that only reads changes nothing.
    const Database& readOnly = db;
    QVERIFY(!GroupRepository(readOnly).add(master(3, u"Salt"_s)).ok);
    QVERIFY(!groups.find(3));
}

QTEST_GUILESS_MAIN(GroupRepositoryTest)
#include "tst_GroupRepository.moc"
