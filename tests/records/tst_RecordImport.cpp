#include "operations/LiveBatchWriter.h"
#include "operations/RecordImport.h"
#include "store/Database.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDateTime T(QDate(2016, 1, 31), QTime(9, 5, 3));

DownloadedRecord record(qint32 user, const QDateTime& at, qint32 zone = 1, qint64 card = 0)
{
    DownloadedRecord r;
    r.door = 2;
    r.localZone = zone;
    r.passageType = 1;
    r.code = 1;
    r.userId = user;
    r.cardId = card;
    r.time = at;
    return r;
}

CardEvent cardEvent(qint32 panel, qint32 user, qint64 card, const QDateTime& at, qint32 door = 1)
{
    CardEvent e;
    e.panelNumber = panel;
    e.door = door;
    e.code = 1;
    e.userId = user;
    e.cardId = card;
    e.time = at;
    return e;
}

int rowCount(Database& db, const QString& where = u"1 = 1"_s, const QVariantList& params = {})
{
    return db.scalar(u"SELECT COUNT(*) FROM \"AccessDatas\" WHERE "_s + where, params).toInt();
}

} // namespace

class RecordImportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void duplicatesAreCountedPerPanel_data() { TestDatabases::addEngineRows(); }
    void duplicatesAreCountedPerPanel();
    void userVisitorAndZonesAreResolved_data() { TestDatabases::addEngineRows(); }
    void userVisitorAndZonesAreResolved();
    void liveAndOfflineStoreAPassageOnce_data() { TestDatabases::addEngineRows(); }
    void liveAndOfflineStoreAPassageOnce();
};

void RecordImportTest::duplicatesAreCountedPerPanel()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    TestDatabases dbs;
    Database db;
    QString error;
    QVERIFY2(dbs.openFresh(TestDatabases::Engine(engine), db, true, &error), qPrintable(error));
    RecordImport import(db);
    RecordImport::Summary sum;

    const QList<DownloadedRecord> first{ record(7, T), record(8, T), record(7, T.addSecs(1)) };
    QVERIFY2(import.store(3, first, &sum, &error), qPrintable(error));
    QCOMPARE(sum.added, 3);
    QVERIFY(import.store(3, first, &sum, &error));
    QCOMPARE(sum.added, 0);
    QCOMPARE(sum.duplicates, 3);

    // The same passages at another panel are other passages.
    QVERIFY(import.store(4, first, &sum, &error));
    QCOMPARE(sum.added, 3);

    // A second passage of user 7 in the same second is new; a third download adds nothing more.
    const QList<DownloadedRecord> repeated{ record(7, T), record(7, T), record(8, T) };
    QVERIFY(import.store(3, repeated, &sum, &error));
    QCOMPARE(sum.added, 1);
    QCOMPARE(sum.duplicates, 2);
    QVERIFY(import.store(3, repeated, &sum, &error));
    QCOMPARE(sum.added, 0);
    QCOMPARE(rowCount(db, u"\"Panel ID\" = 3"_s), 4);

    // Stored columns read back as written.
    QSqlQuery q = db.query(u"SELECT \"Kapi ID\", \"Gecis Tipi\", \"Kod\", \"Tarih\" FROM \"AccessDatas\" "
                           u"WHERE \"Panel ID\" = 3 AND \"ID\" = 8"_s);
    QVERIFY(q.next());
    QCOMPARE(q.value(0).toInt(), 2);
    QCOMPARE(q.value(1).toInt(), 1);
    QCOMPARE(q.value(2).toInt(), 1);
    QCOMPARE(Database::dateTime(q.value(3)), T);
}

void RecordImportTest::userVisitorAndZonesAreResolved()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    TestDatabases dbs;
    Database db;
    QString error;
    QVERIFY2(dbs.openFresh(TestDatabases::Engine(engine), db, true, &error), qPrintable(error));

    QVERIFY(db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Kullanici Tipi"_s }, { 5, 500, 1 }, &error));
    QVERIFY(db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Kullanici Tipi"_s }, { 6, 600, 0 }, &error));
    // Visits of card 500: the day before, then three on the day, one of them without a time.
    const QDate day = T.date();
    const auto visit = [&](const QDate& date, const QVariant& time) {
        qint64 no = 0;
        const QVariant saat = time.isNull() ? QVariant() : QVariant(time.toTime());
        if (!db.insert(u"Visitors"_s, { u"User ID"_s, u"Kart ID"_s, u"Tarih"_s, u"Saat"_s },
                       { 5, 500, QDateTime(date, QTime(0, 0)), saat }, &error, &no, u"Kayit No"_s))
            qWarning() << error;
        return no;
    };
    visit(day.addDays(-1), QTime(8, 0));
    const qint64 early = visit(day, QTime(8, 0));
    const qint64 later = visit(day, QTime(9, 0));
    visit(day, QVariant());
    visit(day, QTime(10, 0));

    QVERIFY(db.insert(u"PanelSettings"_s,
                      { u"Sira No"_s, u"Panel ID"_s, u"Panel Global Bolge1"_s, u"Panel Global Bolge2"_s },
                      { 1, 3, 5, 77 }, &error));
    QVERIFY(db.insert(u"GlobalZones"_s, { u"Global Bolge No"_s, u"Global Bolge Adi"_s }, { 5, u"Lobi"_s }, &error));

    const QList<DownloadedRecord> records{
        record(5, QDateTime(day, QTime(9, 30)), 1, 500), // after the 09:00 visit
        record(5, QDateTime(day, QTime(8, 0)), 2, 500), // exactly at 08:00: no earlier visit
        record(6, QDateTime(day, QTime(9, 31)), 1, 600), // a person
        record(9, QDateTime(day, QTime(9, 32)), 1, 900), // a card nobody holds
    };
    RecordImport import(db);
    RecordImport::Summary sum;
    QVERIFY2(import.store(3, records, &sum, &error), qPrintable(error));
    QVERIFY(import.store(12, { record(5, QDateTime(day, QTime(9, 33)), 2, 500) }, &sum, &error));

    QSqlQuery q = db.query(u"SELECT \"ID\", \"Kullanici Tipi\", \"Visitor No\", \"Lokal Bolge No\", "
                           u"\"Global Bolge No\", \"Panel ID\" FROM \"AccessDatas\" ORDER BY \"Tarih\""_s);
    struct Expect
    {
        int id;
        QVariant type;
        QVariant visitor;
        int local;
        int global;
    };
    // Zone 1 maps to listed global zone 5; zone 2 to 77, which GlobalZones does not list, so 1;
    // panel 12 has no settings, so 1.
    const QList<Expect> expected{ { 5, 1, QVariant(), 2, 1 },
                                  { 5, 1, later, 1, 5 },
                                  { 6, 0, QVariant(), 1, 5 },
                                  { 9, QVariant(), QVariant(), 1, 5 },
                                  { 5, 1, later, 2, 1 } };
    Q_UNUSED(early);
    for (const Expect& e : expected) {
        QVERIFY(q.next());
        QCOMPARE(q.value(0).toInt(), e.id);
        QCOMPARE(q.value(1).isNull(), e.type.isNull());
        if (!e.type.isNull())
            QCOMPARE(q.value(1).toInt(), e.type.toInt());
        QCOMPARE(q.value(2).isNull(), e.visitor.isNull());
        if (!e.visitor.isNull())
            QCOMPARE(q.value(2).toLongLong(), e.visitor.toLongLong());
        QCOMPARE(q.value(3).toInt(), e.local);
        QCOMPARE(q.value(4).toInt(), e.global);
    }
    QVERIFY(!q.next());
}

void RecordImportTest::liveAndOfflineStoreAPassageOnce()
{
    QFETCH(int, engine);
    KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
    TestDatabases dbs;
    Database db;
    QString error;
    QVERIFY2(dbs.openFresh(TestDatabases::Engine(engine), db, true, &error), qPrintable(error));
    LiveBatchWriter live(db);
    RecordImport import(db);
    LiveBatchWriter::Outcome outcome;
    RecordImport::Summary sum;

    // Live first: the rows come back with their record numbers, in order.
    QVERIFY2(live.store({ cardEvent(2, 7, 70, T), cardEvent(2, 8, 80, T) }, &outcome, &error), qPrintable(error));
    QCOMPARE(outcome.stored.size(), 2);
    QVERIFY(outcome.stored[0].recordNo > 0);
    QCOMPARE(outcome.stored[1].recordNo, outcome.stored[0].recordNo + 1);
    QCOMPARE(db.scalar(u"SELECT \"ID\" FROM \"AccessDatas\" WHERE \"Kayit No\" = ?"_s, { outcome.stored[1].recordNo })
                 .toInt(),
             8);

    // The later download holds both and one passage the live link missed.
    QVERIFY(import.store(2, { record(7, T), record(8, T), record(9, T) }, &sum, &error));
    QCOMPARE(sum.added, 1);
    QCOMPARE(sum.duplicates, 2);

    // Offline first: the live frames of those passages, arriving late, add nothing...
    QVERIFY(import.store(5, { record(7, T), record(7, T.addSecs(2)) }, &sum, &error));
    QVERIFY(live.store({ cardEvent(5, 7, 70, T), cardEvent(5, 7, 70, T.addSecs(2)) }, &outcome, &error));
    QCOMPARE(outcome.stored.size(), 0);
    QCOMPARE(outcome.duplicates, 2);
    // ...while two strangers' cards (user 0) in one second are two passages, even across batches.
    QVERIFY(live.store({ cardEvent(5, 0, 111, T.addSecs(5)), cardEvent(5, 0, 222, T.addSecs(5)) }, &outcome, &error));
    QCOMPARE(outcome.stored.size(), 2);
    QVERIFY(live.store({ cardEvent(5, 0, 333, T.addSecs(5)) }, &outcome, &error));
    QCOMPARE(outcome.stored.size(), 1);

    QCOMPARE(rowCount(db, u"\"Panel ID\" = 2"_s), 3);
    QCOMPARE(rowCount(db, u"\"Panel ID\" = 5"_s), 5);
}

QTEST_GUILESS_MAIN(RecordImportTest)
#include "tst_RecordImport.moc"
