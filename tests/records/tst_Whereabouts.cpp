// "Who is inside now" read from the kept whereabouts must give exactly the rows of a scan of
// every stored passage, whatever road and order the passages came by, on both engines.

#include "operations/live/LiveBatchWriter.h"
#include "operations/records/RecordImport.h"
#include "operations/records/WhereaboutsRepair.h"
#include "reports/ReportBuilder.h"
#include "reports/ReportCatalogue.h"
#include "reports/ReportRowSource.h"
#include "store/Database.h"
#include "store/Schema.h"
#include "store/Whereabouts.h"
#include "support/TestDatabases.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDate Day(2025, 6, 2);

QDateTime at(int h, int m, int s = 0)
{
    return QDateTime(Day, QTime(h, m, s));
}

DownloadedRecord record(qint32 user, qint64 card, const QDateTime& time, Direction direction, qint32 door = 1,
                        PassageCode code = PassageCode::Granted)
{
    return { door, door > 2 ? 2 : 1, direction, code, user, card, time };
}

CardEvent live(qint32 panel, qint32 user, qint64 card, const QDateTime& time, Direction direction, qint32 door = 1)
{
    return { panel, door, PassageCode::Granted, direction, user, card, time };
}

QList<QVariantList> inOut(const Database& db, ReportFilter f, bool wholeHistory)
{
    f.presence = ReportFilter::Presence::All;
    if (wholeHistory) {
        // A date range covering every passage: the report scans the history.
        f.allDates = false;
        f.twoDates = true;
        f.dateStart = QDate(2000, 1, 1);
        f.dateEnd = QDate(2099, 12, 31);
    }
    // Read as the windows read it, in small steps so that the pages join up.
    ReportRowSource source;
    QString error;
    if (!source.open(db, ReportBuilder::build(db, ReportKind::InOut, f), &error))
        qWarning() << error;
    QList<QVariantList> rows;
    while (!source.atEnd())
        rows += source.fetch(2);
    if (!source.error().isEmpty())
        qWarning() << source.error();
    return rows;
}

// The kept whereabouts and the history scan agree for every filter the report takes; returns
// the unfiltered rows.
QList<QVariantList> compareWithHistory(const Database& db)
{
    ReportFilter f;
    const QList<QVariantList> all = inOut(db, f, false);
    if (all != inOut(db, f, true))
        return { { u"differs over all"_s } };
    f.allPanels = false;
    f.panels = { 2 };
    if (inOut(db, f, false) != inOut(db, f, true))
        return { { u"differs for panel 2"_s } };
    f = ReportFilter();
    f.zone = 2;
    f.person = 1;
    if (inOut(db, f, false) != inOut(db, f, true))
        return { { u"differs for person 1 in zone 2"_s } };
    return all;
}

// (person, zone, inside) of each row.
QList<QList<int>> states(const QList<QVariantList>& rows)
{
    QList<QList<int>> out;
    for (const QVariantList& row : rows)
        out.append({ row.value(1).toInt(), row.value(0).toString() == u"Otopark"_s ? 2 : 1,
                     row.value(7).toString() == ReportCatalogue::presenceText(true) ? 1 : 0 });
    return out;
}

} // namespace

class WhereaboutsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keptWhereaboutsEqualTheHistory_data() { TestDatabases::addEngineRows(); }
    void keptWhereaboutsEqualTheHistory();
};

void WhereaboutsTest::keptWhereaboutsEqualTheHistory()
{
    KX_OPEN_FRESH_DATABASE(dbs, db);
    QString error;
    // Persons 1-4 personnel, card 205 a visitor's; panels 1 and 2 with doors 3-4 in zone 2.
    QList<QVariantList> users;
    for (int id = 1; id <= 4; ++id)
        users << QVariantList{ id, 100 + id, u"Kişi %1"_s.arg(id), 0 };
    users << QVariantList{ 5, 205, u"Ziyaretçi"_s, 1 };
    QVERIFY2(db.insertRows(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Kullanici Tipi"_s }, users, &error),
             qPrintable(error));
    QVERIFY2(db.insertRows(u"PanelSettings"_s,
                           { u"Panel ID"_s, u"Kapi3 Lokal Bolge"_s, u"Kapi4 Lokal Bolge"_s, u"Panel Global Bolge1"_s,
                             u"Panel Global Bolge2"_s },
                           { { 1, 2, 2, 1, 2 }, { 2, 2, 2, 1, 2 } }, &error),
             qPrintable(error));
    QVERIFY2(db.insertRows(u"GlobalZones"_s, { u"Global Bolge No"_s, u"Global Bolge Adi"_s }, { { 2, u"Otopark"_s } },
                           &error),
             qPrintable(error));

    LiveBatchWriter monitor(db);
    RecordImport import(db);
    // Live first: person 1 left zone 1 at 10:00, person 2 came into zone 2 at 09:00.
    QVERIFY2(
        monitor.store({ live(1, 1, 101, at(10, 0), Direction::Exit), live(2, 2, 102, at(9, 0), Direction::Entry, 3) },
                      nullptr, &error),
        qPrintable(error));
    // The panels' memories come later with older passages: they must not undo the live ones.
    QVERIFY2(import.store(1,
                          { record(1, 101, at(8, 0), Direction::Entry), // older than the live exit
                            record(3, 103, at(7, 30), Direction::Exit), // newer of a pair in one batch,
                            record(3, 103, at(7, 0), Direction::Entry), // handed in first
                            record(2, 102, at(11, 0), Direction::Exit, 3, PassageCode::Denied),
                            record(5, 205, at(11, 0), Direction::Entry), // a visitor's card
                            record(1, 101, at(6, 0), Direction::Entry, 4) },
                          nullptr, &error),
             qPrintable(error));
    QVERIFY2(
        import.store(2, { record(2, 102, at(8, 0), Direction::Exit, 4), record(1, 101, at(12, 0), Direction::Exit, 3) },
                     nullptr, &error),
        qPrintable(error));
    // Two passages of one second: the one stored last counts, in the scan and in the kept rows.
    QVERIFY(monitor.store({ live(1, 4, 104, at(13, 0), Direction::Entry) }, nullptr, &error));
    QVERIFY(import.store(1, { record(4, 104, at(13, 0), Direction::Exit) }, nullptr, &error));

    const QList<QVariantList> rows = compareWithHistory(db);
    const QList<QList<int>> expected{ { 1, 1, 0 }, { 3, 1, 0 }, { 4, 1, 0 }, { 1, 2, 0 }, { 2, 2, 1 } };
    QCOMPARE(states(rows), expected);

    // The repair makes the same rows from the history.
    QVERIFY(db.exec(u"DELETE FROM \"Whereabouts\" WHERE \"ID\" = 2"_s));
    QCOMPARE(WhereaboutsRepair::run(db, &error), 6);
    QCOMPARE(compareWithHistory(db), rows);

    // A database from before they were kept gets them on its upgrade.
    QVERIFY(db.exec(u"DROP TABLE \"Whereabouts\""_s));
    const Schema::UpgradeResult upgrade = Schema::upgrade(db);
    QVERIFY2(upgrade.skipped.isEmpty(), qPrintable(upgrade.skipped.join(u'\n')));
    QCOMPARE(compareWithHistory(db), rows);

    // Old passages removed after a backup take what only they said with them.
    const QDateTime cutoff = at(9, 30);
    QVERIFY(db.exec(u"DELETE FROM \"AccessDatas\" WHERE \"Tarih\" < ?"_s, { db.toSql(cutoff) }));
    QVERIFY(Whereabouts::forgetBefore(db, cutoff, &error));
    const QList<QList<int>> left{ { 1, 1, 0 }, { 4, 1, 0 }, { 1, 2, 0 } };
    QCOMPARE(states(compareWithHistory(db)), left);
}

QTEST_GUILESS_MAIN(WhereaboutsTest)
#include "tst_Whereabouts.moc"
