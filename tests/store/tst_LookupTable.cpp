#include "store/Database.h"
#include "store/LookupTable.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_LookupTable : public QObject
{
    Q_OBJECT

private slots:
    void editing_data() { TestDatabases::addEngineRows(); }
    void editing();
    void cursorAfterDelete();
};

void tst_LookupTable::editing()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    // The three tables share every rule: companies here, the others' own rows at the end.
    const LookupTable table(LookupTable::Kind::Companies);

    QCOMPARE(table.nextFreeKey(db), 1);

    // Names with apostrophes, quotes, SQL text and any letters are stored exactly.
    const QString tricky = u"O'Reilly \"Ltd\"; DROP TABLE Users; -- Çağrı İşçi عربي"_s;
    auto r = table.add(db, tricky);
    QVERIFY2(r.ok, qPrintable(r.error));
    QCOMPARE(table.add(db, u"Yedi"_s, 7).key, 7);
    // Without a number the next one above the highest is taken.
    r = table.add(db, u"Sekiz"_s);
    QCOMPARE(r.key, 8);
    QCOMPARE(table.rows(db), (QList<LookupTable::Row>{ { 1, tricky }, { 7, u"Yedi"_s }, { 8, u"Sekiz"_s } }));
    QVERIFY(db.tableExists(u"Users"_s));

    // A number already in use is refused with the station's message and changes nothing.
    r = table.add(db, u"İkinci yedi"_s, 7);
    QCOMPARE(r.message.turkish(), u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s);

    // Renaming, renumbering, and renumbering onto a used number.
    QVERIFY(table.update(db, 7, 7, u"Yedi'nci"_s).ok);
    QVERIFY(table.update(db, 8, 3, u"Üç"_s).ok);
    QVERIFY(!table.update(db, 3, 1, u"Bir"_s).ok);
    QVERIFY(!table.update(db, 42, 43, u"yok"_s).ok);
    QCOMPARE(table.rows(db), (QList<LookupTable::Row>{ { 1, tricky }, { 3, u"Üç"_s }, { 7, u"Yedi'nci"_s } }));

    // Deleting, also a row that is not there.
    QVERIFY(table.remove(db, 7).ok);
    QVERIFY(!table.remove(db, 7).ok);
    QCOMPARE(table.rows(db), (QList<LookupTable::Row>{ { 1, tricky }, { 3, u"Üç"_s } }));
    QCOMPARE(table.nextFreeKey(db), 4);

    // The other two tables keep rows of their own.
    for (auto k : { LookupTable::Kind::Departments, LookupTable::Kind::Blocks }) {
        QVERIFY(LookupTable(k).add(db, u"Başka"_s, 5).ok);
        QCOMPARE(LookupTable(k).rows(db), (QList<LookupTable::Row>{ { 5, u"Başka"_s } }));
    }
}

void tst_LookupTable::cursorAfterDelete()
{
    // Deleting the last of five rows leaves the cursor on the new last row; otherwise on the next.
    QCOMPARE(LookupTable::rowAfterDelete(4, 4), 3);
    QCOMPARE(LookupTable::rowAfterDelete(1, 4), 1);
    QCOMPARE(LookupTable::rowAfterDelete(0, 0), -1);
}

QTEST_GUILESS_MAIN(tst_LookupTable)
#include "tst_LookupTable.moc"
