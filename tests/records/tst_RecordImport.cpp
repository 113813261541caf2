#include "operations/live/LiveBatchWriter.h"
#include "operations/records/RecordErasures.h"
#include "operations/records/RecordImport.h"
#include "store/Database.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDateTime T(QDate(2016, 1, 31), QTime(9, 5, 3));

// A granted exit, by default through door 2.
DownloadedRecord record(qint32 user, const QDateTime& at, qint32 zone = 1, qint64 card = 0, qint32 door = 2)
{
    return { door, zone, Direction::Exit, PassageCode::Granted, user, card, at };
}

// The live twin of record().
CardEvent cardEvent(qint32 panel, qint32 user, qint64 card, const QDateTime& at, qint32 door = 2)
{
    return { panel, door, PassageCode::Granted, Direction::Exit, user, card, at };
}

using Counts = QPair<int, int>;

// Stores one panel's download: (added, already stored), or (-1, -1) when the store fails.
Counts download(RecordImport& import, qint32 panel, const QList<DownloadedRecord>& records)
{
    RecordImport::Summary sum;
    QString error;
    if (!import.store(panel, records, &sum, &error)) {
        qWarning() << error;
        return { -1, -1 };
    }
    return { sum.added, sum.duplicates };
}

// Stores live passages: (stored, already stored), or (-1, -1) when the store fails.
Counts liveStore(LiveBatchWriter& live, const QList<CardEvent>& events)
{
    LiveBatchWriter::Outcome outcome;
    QString error;
    if (!live.store(events, &outcome, &error)) {
        qWarning() << error;
        return { -1, -1 };
    }
    return { int(outcome.stored.size()), outcome.duplicates };
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
    void passagesDifferingInAnyFieldAreAllKept_data() { TestDatabases::addEngineRows(); }
    void passagesDifferingInAnyFieldAreAllKept();
    void anErasedPanelIsComparedOnlyWithLaterRows_data() { TestDatabases::addEngineRows(); }
    void anErasedPanelIsComparedOnlyWithLaterRows();
};

void RecordImportTest::duplicatesAreCountedPerPanel()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    RecordImport import(db);
    const QList<DownloadedRecord> first{ record(7, T), record(8, T), record(7, T.addSecs(1)) };
    QCOMPARE(download(import, 3, first), Counts(3, 0));
    QCOMPARE(download(import, 3, first), Counts(0, 3));

    // The same passages at another panel are other passages.
    QCOMPARE(download(import, 4, first), Counts(3, 0));

    // A second passage of user 7 in the same second is new; a third download adds nothing more.
    const QList<DownloadedRecord> repeated{ record(7, T), record(7, T), record(8, T) };
    QCOMPARE(download(import, 3, repeated), Counts(1, 2));
    QCOMPARE(download(import, 3, repeated), Counts(0, 3));
}

void RecordImportTest::userVisitorAndZonesAreResolved()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    QString error;

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

    // Door 1 lies in local zone 1 (global 5), door 2 in local zone 2, whose global zone 1000 is
    // out of range and so becomes 1.
    QVERIFY(db.insert(u"PanelSettings"_s,
                      { u"Sira No"_s, u"Panel ID"_s, u"Kapi1 Lokal Bolge"_s, u"Kapi2 Lokal Bolge"_s,
                        u"Panel Global Bolge1"_s, u"Panel Global Bolge2"_s },
                      { 1, 3, 1, 2, 5, 1000 }, &error));

    const QList<DownloadedRecord> records{
        record(5, QDateTime(day, QTime(9, 30)), 1, 500, 1), // after the 09:00 visit
        record(5, QDateTime(day, QTime(8, 0)), 1, 500), // exactly at 08:00: no earlier visit; the door's zone wins
        record(6, QDateTime(day, QTime(9, 31)), 2, 600, 1), // a person
        record(9, QDateTime(day, QTime(9, 32)), 1, 900, 1), // a card nobody holds
    };
    RecordImport import(db);
    RecordImport::Summary sum;
    QVERIFY2(import.store(3, records, &sum, &error), qPrintable(error));
    // A panel without settings: the zone it reported, global zone 1.
    QVERIFY(import.store(12, { record(5, QDateTime(day, QTime(9, 33)), 2, 500) }, &sum, &error));
    // A live passage through door 2 of panel 3 lands in the same zones as a downloaded one.
    LiveBatchWriter live(db);
    QVERIFY(live.store({ cardEvent(3, 6, 600, QDateTime(day, QTime(9, 34))) }, nullptr, &error));

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
    const QList<Expect> expected{ { 5, 1, QVariant(), 2, 1 }, { 5, 1, later, 1, 5 },
                                  { 6, 0, QVariant(), 1, 5 }, { 9, QVariant(), QVariant(), 1, 5 },
                                  { 5, 1, later, 2, 1 },      { 6, 0, QVariant(), 2, 1 } };
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
    KX_OPEN_FRESH_DATABASE(dbs, db);
    LiveBatchWriter live(db);
    RecordImport import(db);

    // Live first (the rows it hands back are the live monitor's test).
    QCOMPARE(liveStore(live, { cardEvent(2, 7, 70, T), cardEvent(2, 8, 80, T) }), Counts(2, 0));

    // The later download holds both and one passage the live link missed.
    QCOMPARE(download(import, 2, { record(7, T), record(8, T), record(9, T) }), Counts(1, 2));

    // Offline first: the live frames of those passages, arriving late, add nothing...
    QCOMPARE(download(import, 5, { record(7, T), record(7, T.addSecs(2)) }), Counts(2, 0));
    QCOMPARE(liveStore(live, { cardEvent(5, 7, 70, T), cardEvent(5, 7, 70, T.addSecs(2)) }), Counts(0, 2));
    // ...while two strangers' cards (user 0) in one second are two passages, even across batches.
    QCOMPARE(liveStore(live, { cardEvent(5, 0, 111, T.addSecs(5)), cardEvent(5, 0, 222, T.addSecs(5)) }), Counts(2, 0));
    QCOMPARE(liveStore(live, { cardEvent(5, 0, 333, T.addSecs(5)) }), Counts(1, 0));
}

void RecordImportTest::passagesDifferingInAnyFieldAreAllKept()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    // One person in one second: another door, the other direction, a refusal next to a grant.
    DownloadedRecord otherDoor = record(7, T, 1, 0, 3);
    DownloadedRecord otherWay = record(7, T);
    otherWay.direction = Direction::Entry;
    DownloadedRecord refused = record(7, T);
    refused.code = PassageCode::Denied;
    const QList<DownloadedRecord> first{ record(7, T), otherDoor, otherWay, refused };
    RecordImport import(db);
    QCOMPARE(download(import, 3, first), Counts(4, 0));

    // The next download holds all four and two identical new ones: both new ones are kept.
    QList<DownloadedRecord> second = first;
    second << record(8, T) << record(8, T);
    QCOMPARE(download(import, 3, second), Counts(2, 4));
    QCOMPARE(download(import, 3, second), Counts(0, 6));
}

void RecordImportTest::anErasedPanelIsComparedOnlyWithLaterRows()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    QString error;
    RecordImport import(db);
    const QList<DownloadedRecord> before{ record(7, T), record(8, T.addSecs(1)) };
    QCOMPARE(download(import, 3, before), Counts(2, 0));
    QCOMPARE(download(import, 4, before), Counts(2, 0));

    // Panel 3's memory is erased. Passages it makes afterwards are new, even where they look
    // like ones stored before the erase (a panel whose clock was set back, a busy door).
    RecordErasures erasures(db);
    const auto mark = erasures.current(&error);
    QVERIFY2(mark.has_value(), qPrintable(error));
    QCOMPARE(mark->lastPassage, db.scalar(u"SELECT max(\"Kayit No\") FROM \"AccessDatas\""_s).toLongLong());
    QVERIFY2(erasures.markErased(3, *mark, T.addSecs(60), &error), qPrintable(error));

    const QList<DownloadedRecord> after{ record(7, T), record(9, T.addSecs(2)) };
    QCOMPARE(download(import, 3, after), Counts(2, 0));
    QCOMPARE(download(import, 3, after), Counts(0, 2));
    // A live frame of a passage stored before the erase, arriving late, is still that passage.
    LiveBatchWriter live(db);
    QCOMPARE(liveStore(live, { cardEvent(3, 8, 0, T.addSecs(1)) }), Counts(0, 1));
    // Panel 4 was not erased: its passages are still matched with everything stored.
    QCOMPARE(download(import, 4, before), Counts(0, 2));

    // A second erase moves the mark on.
    QVERIFY(erasures.markErased(3, *erasures.current(), T.addSecs(120), &error));
    QCOMPARE(download(import, 3, after), Counts(2, 0));
}

QTEST_GUILESS_MAIN(RecordImportTest)
#include "tst_RecordImport.moc"
