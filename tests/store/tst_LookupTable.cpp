#include "store/Database.h"
#include "store/LookupTable.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(LookupTable::Kind)

class tst_LookupTable : public QObject
{
    Q_OBJECT

private slots:
    void editing_data();
    void editing();
    void cursorAfterDelete();
};

void tst_LookupTable::editing_data()
{
    QTest::addColumn<int>("engine");
    QTest::addColumn<LookupTable::Kind>("kind");
    for (int engine : { int(TestDatabases::SQLite), int(TestDatabases::PostgreSQL) }) {
        const char* e = engine == TestDatabases::SQLite ? "sqlite" : "postgresql";
        QTest::addRow("%s companies", e) << engine << LookupTable::Kind::Companies;
        QTest::addRow("%s departments", e) << engine << LookupTable::Kind::Departments;
        QTest::addRow("%s blocks", e) << engine << LookupTable::Kind::Blocks;
    }
}

void tst_LookupTable::editing()
{
    QFETCH(int, engine);
    QFETCH(LookupTable::Kind, kind);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    TestDatabases dbs;
    Database db;
    QString error;
    QVERIFY2(dbs.openFresh(TestDatabases::Engine(engine), db, true, &error), qPrintable(error));
    const LookupTable table(kind);

    QVERIFY(table.rows(db, &error).isEmpty());
    QCOMPARE(table.nextFreeKey(db), 1);

    // Names with apostrophes, quotes, SQL text and any letters are stored exactly.
    const QString tricky = u"O'Reilly \"Ltd\"; DROP TABLE Users; -- Çağrı İşçi عربي"_s;
    auto r = table.add(db, tricky);
    QVERIFY2(r.ok, qPrintable(r.error));
    QCOMPARE(r.key, 1);
    r = table.add(db, u"Yedi"_s, 7);
    QVERIFY(r.ok);
    QCOMPARE(r.key, 7);
    // Without a number the next one above the highest is taken.
    r = table.add(db, u"Sekiz"_s);
    QCOMPARE(r.key, 8);
    QCOMPARE(table.rows(db), (QList<LookupTable::Row>{ { 1, tricky }, { 7, u"Yedi"_s }, { 8, u"Sekiz"_s } }));
    QVERIFY(db.tableExists(u"Users"_s));

    // A number already in use is refused with the station's message and changes nothing.
    r = table.add(db, u"İkinci yedi"_s, 7);
    QVERIFY(!r.ok);
    QCOMPARE(r.message.turkish(), u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s);
    QCOMPARE(table.rows(db).size(), 3);

    // Renaming, renumbering, and renumbering onto a used number.
    r = table.update(db, 7, 7, u"Yedi'nci"_s);
    QVERIFY(r.ok);
    r = table.update(db, 8, 3, u"Üç"_s);
    QVERIFY(r.ok);
    QCOMPARE(r.key, 3);
    r = table.update(db, 3, 1, u"Bir"_s);
    QVERIFY(!r.ok);
    QCOMPARE(r.message.turkish(), u"Birincil anahtar hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!"_s);
    QVERIFY(!table.update(db, 42, 43, u"yok"_s).ok);
    QCOMPARE(table.rows(db), (QList<LookupTable::Row>{ { 1, tricky }, { 3, u"Üç"_s }, { 7, u"Yedi'nci"_s } }));

    // Deleting, also a row that is not there.
    QVERIFY(table.remove(db, 7).ok);
    QVERIFY(!table.remove(db, 7).ok);
    QCOMPARE(table.rows(db), (QList<LookupTable::Row>{ { 1, tricky }, { 3, u"Üç"_s } }));
    QCOMPARE(table.nextFreeKey(db), 4);

    // The other two tables were not touched.
    int others = 0;
    for (auto k : { LookupTable::Kind::Companies, LookupTable::Kind::Departments, LookupTable::Kind::Blocks }) {
        if (k != kind)
            others += static_cast<int>(LookupTable(k).rows(db).size());
    }
    QCOMPARE(others, 0);
}

void tst_LookupTable::cursorAfterDelete()
{
    // Deleting the last of five rows leaves the cursor on the new last row; otherwise on the next.
    QCOMPARE(LookupTable::rowAfterDelete(4, 4), 3);
    QCOMPARE(LookupTable::rowAfterDelete(1, 4), 1);
    QCOMPARE(LookupTable::rowAfterDelete(0, 0), -1);
    QCOMPARE(LookupTable::rowAfterDelete(0, 1), 0);
}

QTEST_GUILESS_MAIN(tst_LookupTable)
#include "tst_LookupTable.moc"
