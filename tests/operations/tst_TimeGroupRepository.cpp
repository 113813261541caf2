// The time groups as the time groups page and kx410ctl keep them, on each engine.

#include "operations/configuration/TimeGroupRepository.h"
#include "store/CodeTable.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString kDuplicate = u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s;
const QString kBadNumber = u"Zaman grup numarası 1-16 arasında sayısal bir ifade olmalıdır!"_s;

// A row with every field away from its default.
TimeGroupRow fullRow(int number)
{
    TimeGroupRow row;
    row.name = u"O'Neil \"Vardiya\"; DROP TABLE TimeGroups; -- Çağrı İşçi"_s;
    TimeGroupRecord& t = row.record;
    t.number = number;
    t.restrictionType = 13;
    t.startDate = QDate(2024, 2, 29);
    t.endDate = QDate(2025, 12, 31);
    t.startTime = QTime(7, 45);
    t.endTime = QTime(19, 5);
    t.weekdays = { true, false, true, false, false, true, true };
    for (int day = 0; day < 7; ++day) {
        t.weekdayStart[day] = QTime(6 + day, 10);
        t.weekdayEnd[day] = QTime(15 + day, 50);
    }
    t.monthDays[0] = t.monthDays[14] = t.monthDays[30] = true;
    t.extraWindow = true;
    t.extraStart = QTime(22, 0);
    t.extraEnd = QTime(23, 30);
    t.startTimes = { QTime(11, 30), QTime(12, 0), QTime(18, 15) };
    t.extraHours = 3;
    t.extraHours2 = 8;
    t.hours = { 0, 1, 2, 13, 22, 23 };
    return row;
}

TimeGroupRow plainRow(int number, const QString& name)
{
    TimeGroupRow row;
    row.record.number = number;
    row.name = name;
    return row;
}

} // namespace

class TimeGroupRepositoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldIsStoredAsGiven_data() { TestDatabases::addEngineRows(); }
    void everyFieldIsStoredAsGiven();
    void numbersAreProposedStoredAndDeletedByTheRules_data() { TestDatabases::addEngineRows(); }
    void numbersAreProposedStoredAndDeletedByTheRules();
};

void TimeGroupRepositoryTest::everyFieldIsStoredAsGiven()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    const TimeGroupRepository timeGroups(db);

    const TimeGroupRow full = fullRow(16);
    TimeGroupRepository::Result r = timeGroups.add(full);
    QVERIFY2(r.ok, qPrintable(r.error));
    QVERIFY(timeGroups.add(plainRow(2, u"Mesai"_s)).ok);
    QVERIFY(timeGroups.find(16) == full);

    // An update writes the columns an add does; the number stays the key, emptied values read empty.
    TimeGroupRow changed = full;
    changed.name = u"Gece"_s;
    changed.record.weekdays = { false, true, false, true, true, false, false };
    changed.record.startDate = QDate();
    changed.record.startTimes[1] = QTime();
    r = timeGroups.update(changed);
    QVERIFY2(r.ok, qPrintable(r.error));
    QVERIFY(timeGroups.find(16) == changed);

    // Number order; a row stored with its number only reads its defaults.
    const QList<TimeGroupRow> rows = timeGroups.list();
    QCOMPARE(rows.size(), 2);
    const TimeGroupRecord& plain = rows.at(0).record;
    QCOMPARE(std::tuple(plain.number, plain.weekdayStart[3], plain.weekdayEnd[3], plain.extraHours2),
             std::tuple(2, QTime(8, 0), QTime(18, 0), 1));
    QVERIFY(rows.at(1) == changed);
    QVERIFY(timeGroups.entries() == (QList<TimeGroupRepository::Entry>{ { 2, u"Mesai"_s }, { 16, u"Gece"_s } }));
    QCOMPARE(timeGroups.numberOf(u" Gece "_s), 16);
    QCOMPARE(timeGroups.numberOf(u"Yok"_s), 0);

    // The type names the page offers are the panels' meanings of the codes.
    QMap<int, QString> types;
    for (const CodeTable::Row& type : CodeTable(CodeTable::Kind::RestrictionTypes).rows(db))
        types.insert(type.code, type.name);
    QCOMPARE(types.value(6), u"Haftalık Plan + Her Gün Ayrı Saat Sınırı"_s);
    QCOMPARE(types.keys(), (QList<int>{ 0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 13 }));
}

void TimeGroupRepositoryTest::numbersAreProposedStoredAndDeletedByTheRules()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    const TimeGroupRepository timeGroups(db);
    QCOMPARE(timeGroups.nextNumber().number, 1);
    QVERIFY(timeGroups.add(plainRow(1, u"Bir"_s)).ok);
    QVERIFY(timeGroups.add(plainRow(5, u"Beş"_s)).ok);
    // The number after the highest, not the first gap.
    TimeGroupRepository::Result next = timeGroups.nextNumber();
    QVERIFY(next.ok);
    QCOMPARE(next.number, 6);

    // A number in use or out of 1..16 is refused and nothing changes.
    const QList<std::pair<int, QString>> refused = { { 5, kDuplicate }, { 0, kBadNumber }, { 17, kBadNumber } };
    for (const auto& [number, text] : refused) {
        const TimeGroupRepository::Result r = timeGroups.add(plainRow(number, u"Başka"_s));
        QVERIFY(!r.ok);
        QCOMPARE(r.message.turkish(), text);
    }
    QVERIFY(timeGroups.entries() == (QList<TimeGroupRepository::Entry>{ { 1, u"Bir"_s }, { 5, u"Beş"_s } }));
    QCOMPARE(timeGroups.update(plainRow(7, u"Yedi"_s)).message.turkish(), u"7 nolu zaman grubu bulunamadı."_s);
    QCOMPARE(timeGroups.update(plainRow(17, u"Yedi"_s)).message.turkish(), kBadNumber);

    for (int number = 6; number <= 16; ++number)
        QVERIFY(timeGroups.add(plainRow(number, QString::number(number))).ok);
    next = timeGroups.nextNumber();
    QVERIFY(!next.ok);
    QCOMPARE(next.message.turkish(), u"Zaman Grup No değeri 16'yı geçemez!"_s);

    QCOMPARE(TimeGroupRepository::deleteQuestion().turkish(), u"Bu zaman grubunu silmek istiyor musunuz?"_s);
    QVERIFY(timeGroups.remove(16).ok);
    QVERIFY(!timeGroups.find(16));
    QCOMPARE(timeGroups.remove(16).message.turkish(), u"16 nolu zaman grubu bulunamadı."_s);
    QCOMPARE(timeGroups.nextNumber().number, 16);

    // Values out of their ranges are kept in them.
    TimeGroupRow row = plainRow(3, u"Üç"_s);
    row.record.restrictionType = 7;
    row.record.hours = { 24, -1, 23, 0, 30, 12 };
    row.record.extraHours = 0;
    row.record.extraHours2 = 9;
    const TimeGroupRecord kept = TimeGroupRepository::normalized(row).record;
    QCOMPARE(kept.restrictionType, 0);
    QCOMPARE(kept.hours, (std::array<qint32, 6>{ 0, 0, 23, 0, 0, 12 }));
    QCOMPARE(kept.extraHours, 1);
    QCOMPARE(kept.extraHours2, 8);
    QCOMPARE(kept.weekdayStart[0], QTime(8, 0));
    QCOMPARE(kept.weekdayEnd[6], QTime(18, 0));
    for (const int type : { 0, 1, 6, 8, 13 })
        QVERIFY(TimeGroupRepository::isKnownType(type));
    for (const int type : { -1, 7, 14 })
        QVERIFY(!TimeGroupRepository::isKnownType(type));
}

QTEST_GUILESS_MAIN(TimeGroupRepositoryTest)
#include "tst_TimeGroupRepository.moc"
