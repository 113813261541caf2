// The reports' statements against a small site with known passages, on SQLite and PostgreSQL.

#include "ReportFixture.h"
#include "reports/ReportBuilder.h"
#include "reports/ReportRowSource.h"
#include "support/TestDatabases.h"

#include <QTest>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

QVariantList ids(std::initializer_list<int> values)
{
    QVariantList list;
    for (int v : values)
        list << QVariant(qint64(v));
    return list;
}

QString shown(const QVariantList& values)
{
    QStringList texts;
    for (const QVariant& v : values)
        texts << v.toString();
    return u'{' + texts.join(u", "_s) + u'}';
}

} // namespace

class ReportStatementsTest : public QObject
{
    Q_OBJECT

private:
    TestDatabases m_dbs;
    Database m_db[2];

    const Database& db()
    {
        QFETCH_GLOBAL(int, engine);
        return m_db[engine];
    }

    QList<QVariantList> run(ReportKind kind, const ReportFilter& f)
    {
        QString error;
        const QList<QVariantList> rows = ReportFixture::rows(db(), kind, f, &error);
        if (!error.isEmpty())
            qWarning() << error;
        return rows;
    }

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<int>("engine");
        QTest::newRow("sqlite") << int(TestDatabases::SQLite);
        if (TestDatabases::available(TestDatabases::PostgreSQL))
            QTest::newRow("postgresql") << int(TestDatabases::PostgreSQL);
        else
            qInfo() << TestDatabases::skipReason();
    }

    void initTestCase()
    {
        for (int e : { 0, 1 }) {
            const auto engine = TestDatabases::Engine(e);
            if (!TestDatabases::available(engine))
                continue;
            QString error;
            QVERIFY2(m_dbs.openFresh(engine, m_db[e], true, &error), qPrintable(error));
            QVERIFY2(ReportFixture::seed(m_db[e], &error), qPrintable(error));
        }
    }

    void cleanupTestCase()
    {
        m_db[0].close();
        m_db[1].close();
    }

    void accessReportDayPanelsAndClients()
    {
        ReportFilter f = ReportFixture::oneDay();
        // The whole day from 00:00:00 to 23:59:59, newest first, records without a person kept.
        QList<QVariantList> rows = run(ReportKind::Access, f);
        QCOMPARE(ReportFixture::column(rows, 0), ids({ 2, 1, 2, 42, 6, 99, 5, 4, 1 }));
        QCOMPARE(rows.first().value(13).toString(), u"Giriş"_s);
        QCOMPARE(rows.at(1).value(13).toString(), u"Çıkış"_s);
        QCOMPARE(rows.first().value(14).toString(), u"Geçiş Onaylandı"_s);
        QCOMPARE(rows.first().value(15).toDateTime(), ReportFixture::wall(0, 23, 59, 59));
        QCOMPARE(rows.at(1).value(2).toString(), u"Ali"_s);
        QCOMPARE(rows.at(1).value(5).toString(), u"Acme"_s);
        QCOMPARE(rows.at(1).value(10).toString(), u"Genel"_s);
        QVERIFY(rows.at(5).value(2).toString().isEmpty());
        QCOMPARE(rows.at(5).value(1).toLongLong(), 5555);
    }

    // Each filter of the passage report on the site's day, by the IDs it leaves, newest first.
    void accessFiltersOnTheDay()
    {
        using F = ReportFilter;
        const struct
        {
            const char* what;
            std::function<void(F&)> set;
            QVariantList expected;
        } cases[] = {
            // No panel ticked: nothing, and no error.
            { "no panel", [](F& f) { f.allPanels = false; }, {} },
            { "panels 2, 3",
              [](F& f) {
                  f.allPanels = false, f.panels = { 2, 3 };
              },
              ids({ 2, 42, 99 }) },
            // A client sees only its watched panels, with all panels ticked or not.
            { "client",
              [](F& f) {
                  f.clientStation = true, f.watchedPanels = { 1, 2, 3 };
              },
              ids({ 2, 1, 42, 6, 99, 5, 4, 1 }) },
            { "client, panels 3, 4",
              [](F& f) {
                  f.clientStation = true, f.watchedPanels = { 1, 2, 3 }, f.allPanels = false, f.panels = { 3, 4 };
              },
              ids({ 99 }) },
            { "door 2", [](F& f) { f.allDoors = false, f.doors = { 2 }; }, ids({ 1, 42 }) },
            { "denied", [](F& f) { f.result = F::Result::Denied; }, ids({ 5 }) },
            { "unknown", [](F& f) { f.result = F::Result::Unknown; }, ids({ 99 }) },
            { "exits", [](F& f) { f.direction = F::Direction::Exit; }, ids({ 1, 42, 4 }) },
            { "08-09", [](F& f) { f.twoHours = true, f.hourStart = QTime(8, 0), f.hourEnd = QTime(9, 0); },
              ids({ 5, 4 }) },
            // Typed text is taken as typed: an apostrophe is a plain character, and so is "%".
            { "plate", [](F& f) { f.plate = u"34 O'NEIL 1"_s; }, ids({ 1, 1 }) },
            { "plate 50%", [](F& f) { f.plate = u"50%"_s; }, {} },
            { "plate 50%OFF", [](F& f) { f.plate = u"50%OFF"_s; }, ids({ 2, 2 }) },
            { "flat", [](F& f) { f.flat = u" 5 "_s; }, ids({ 1, 1 }) },
            { "person", [](F& f) { f.person = 2, f.group = 2, f.company = 1, f.department = 2; }, ids({ 2, 2 }) },
            { "person, block",
              [](F& f) { f.person = 2, f.group = 2, f.company = 1, f.department = 2, f.block = 1; },
              {} },
            // Zone 1 holds panel 1 doors 1-2 and panel 3; panel 4 has no settings and no zone.
            { "zone 1", [](F& f) { f.zone = 1; }, ids({ 1, 6, 99, 5, 4, 1 }) },
            { "zone 2", [](F& f) { f.zone = 2; }, ids({ 2, 42 }) },
            // A zone without doors gives nothing rather than an error.
            { "zone 7", [](F& f) { f.zone = 7; }, {} },
            // A client's unwatched panels take no part in the zone.
            { "client, zone 2", [](F& f) { f.zone = 2, f.clientStation = true, f.watchedPanels = { 1 }; }, {} },
        };
        for (const auto& c : cases) {
            ReportFilter f = ReportFixture::oneDay();
            c.set(f);
            const QVariantList got = ReportFixture::column(run(ReportKind::Access, f), 0);
            QVERIFY2(got == c.expected, qPrintable(QString::fromLatin1(c.what) + u": "_s + shown(got)));
        }
    }

    void accessReportDateWindows()
    {
        // Two dates with hours: from the last second of the day before to the first of the next.
        ReportFilter f = ReportFixture::oneDay();
        f.twoDates = true;
        f.twoHours = true;
        f.dateStart = ReportFixture::day().addDays(-1);
        f.dateEnd = ReportFixture::day().addDays(1);
        f.hourStart = QTime(23, 59, 59);
        f.hourEnd = QTime(0, 0, 0);
        QCOMPARE(run(ReportKind::Access, f).size(), 11);
        // An end before the start is refused with a message, not run.
        f = ReportFixture::oneDay();
        f.twoHours = true;
        f.hourStart = QTime(10, 0, 0);
        f.hourEnd = QTime(9, 0, 0);
        ReportStatement st = ReportBuilder::build(db(), ReportKind::Access, f);
        QCOMPARE(st.refusal, ReportBuilder::dateOrderMessage());
        f = ReportFixture::oneDay();
        f.twoDates = true;
        f.dateEnd = ReportFixture::day().addDays(-1);
        st = ReportBuilder::build(db(), ReportKind::Access, f);
        QVERIFY(st.isRefused());
        QCOMPARE(ReportRowSource::count(db(), st), 0);
    }

    void personFiltersTakeTextAsTyped()
    {
        ReportFilter f = ReportFixture::oneDay();
        for (const QString& typed : { u"5a"_s, u""_s, u"99999999999"_s }) {
            f.flat = typed;
            for (ReportKind kind : { ReportKind::Access, ReportKind::Personnel }) {
                const ReportStatement st = ReportBuilder::build(db(), kind, f);
                QCOMPARE(st.refusal, ReportBuilder::flatNotNumberMessage());
            }
        }

        // The personnel list: personnel only (its plate filter and joined names are the CSV test's).
        QCOMPARE(ReportFixture::column(run(ReportKind::Personnel, ReportFilter()), 0), ids({ 1, 2, 3, 4, 5 }));
    }

    void cameAndNotCome()
    {
        ReportFilter f;
        f.day = ReportFixture::day();
        // Person 1's only entry is at 00:00:00, person 4 only went out, person 5 was denied:
        // none of them came. Person 2's entry at 23:59:59 counts.
        QCOMPARE(ReportFixture::column(run(ReportKind::Came, f), 0), ids({ 2 }));
        QList<QVariantList> notCome = run(ReportKind::NotCome, f);
        QCOMPARE(ReportFixture::column(notCome, 0), ids({ 1, 3, 4, 5, 6 }));
        QCOMPARE(notCome.first().value(10).toString(), u"Genel"_s);

        // Person 2 entered through zone 2 and through an unzoned panel only.
        f.zone = 1;
        QVERIFY(run(ReportKind::Came, f).isEmpty());
        QCOMPARE(ReportFixture::column(run(ReportKind::NotCome, f), 0), ids({ 1, 2, 3, 4, 5, 6 }));
        f.zone = 2;
        QList<QVariantList> came = run(ReportKind::Came, f);
        QCOMPARE(ReportFixture::column(came, 0), ids({ 2 }));
        QCOMPARE(came.first().value(11).toString(), u"Otopark"_s);
        f.clientStation = true;
        f.watchedPanels = { 1 };
        QVERIFY(run(ReportKind::Came, f).isEmpty());

        f = ReportFilter();
        f.day = ReportFixture::day();
        f.group = 2;
        QCOMPARE(ReportFixture::column(run(ReportKind::Came, f), 0), ids({ 2 }));
        QVERIFY(run(ReportKind::NotCome, f).isEmpty());
        // The next day: person 2's midnight entry does not count either.
        f = ReportFilter();
        f.day = ReportFixture::day().addDays(1);
        QVERIFY(run(ReportKind::Came, f).isEmpty());
        // No day chosen is refused.
        QVERIFY(ReportBuilder::build(db(), ReportKind::Came, ReportFilter()).isRefused());
    }

    void firstInLastOut()
    {
        ReportFilter f;
        f.day = ReportFixture::day();
        const QList<QVariantList> rows = run(ReportKind::FirstInLastOut, f);
        QCOMPARE(ReportFixture::column(rows, 0), ids({ 1, 2, 4 }));
        // A single passage shows the same time twice; the midnight entry is left out.
        QCOMPARE(rows.at(0).value(8).toDateTime(), ReportFixture::wall(0, 17, 30, 0));
        QCOMPARE(rows.at(0).value(9).toDateTime(), ReportFixture::wall(0, 17, 30, 0));
        QCOMPARE(rows.at(1).value(8).toDateTime(), ReportFixture::wall(0, 13, 0, 0));
        QCOMPARE(rows.at(1).value(9).toDateTime(), ReportFixture::wall(0, 23, 59, 59));
        QCOMPARE(rows.at(1).value(7).toString(), u"Yönetim"_s);
        QCOMPARE(ReportRowSource::count(db(), ReportBuilder::build(db(), ReportKind::FirstInLastOut, f)), 3);
        f.zone = 2;
        const QList<QVariantList> zoned = run(ReportKind::FirstInLastOut, f);
        QCOMPARE(ReportFixture::column(zoned, 0), ids({ 2 }));
        QCOMPARE(zoned.first().value(10).toString(), u"Otopark"_s);
    }

    void doorOperations()
    {
        ReportFilter f = ReportFixture::oneDay();
        QList<QVariantList> rows = run(ReportKind::DoorOperations, f);
        // Only codes 5..10; a number without an operation text is kept, named by its event code.
        // Who carried each out follows the code.
        QCOMPARE(ReportFixture::column(rows, 0), ids({ 42, 6 }));
        QCOMPARE(rows.at(0).value(4).toString(), u"Operatör Tetikleme"_s);
        QCOMPARE(rows.at(1).value(4).toString(), u"Operatör Açma"_s);
        QCOMPARE(ReportFixture::column(rows, 5), (QVariantList{ u"Operatör"_s, u"Operatör"_s }));
        f.operation = PassageCode::OperatorOpen;
        QCOMPARE(ReportFixture::column(run(ReportKind::DoorOperations, f), 0), ids({ 6 }));
        f.operation.reset();
        f.allPanels = false;
        f.panels = { 2 };
        QCOMPARE(ReportFixture::column(run(ReportKind::DoorOperations, f), 0), ids({ 42 }));
    }

    void readingThroughGivesTheScreensRows()
    {
        // A file or a printer reads the whole report in one pass where the windows read pages:
        // the same rows in the same order either way.
        const QList<std::pair<ReportKind, ReportFilter>> reports{ { ReportKind::DoorOperations, ReportFilter() },
                                                                  { ReportKind::Visitors, ReportFixture::oneDay() },
                                                                  { ReportKind::InOut, ReportFilter() } };
        for (const auto& [kind, filter] : reports) {
            const QList<QVariantList> screens = run(kind, filter);
            QVERIFY(!screens.isEmpty());
            ReportRowSource source;
            QVERIFY(source.open(db(), ReportBuilder::build(db(), kind, filter), nullptr,
                                ReportRowSource::Reading::Through));
            QList<QVariantList> through;
            while (!source.atEnd())
                through += source.fetch(3);
            QCOMPARE(through, screens);
        }
    }

    void visitorsInOutAndMonthly()
    {
        const QList<QVariantList> visits = run(ReportKind::Visitors, ReportFixture::oneDay());
        QCOMPARE(visits.size(), 1);
        QCOMPARE(visits.first().value(1).toString(), u"Can"_s);
        QCOMPARE(visits.first().value(5).toString(), u"Toplantı"_s);
        QCOMPARE(visits.first().value(6).toString(), u"Ali Veli"_s);
        QCOMPARE(visits.first().value(7).toDate(), ReportFixture::day());

        // The stored anti-passback state overrides person 2's last entry into zone 2.
        ReportFilter f;
        QList<QVariantList> inside = run(ReportKind::InOut, f);
        QCOMPARE(inside.size(), 1);
        QCOMPARE(inside.first().value(0).toString(), u"Ana Bina"_s);
        QCOMPARE(inside.first().value(1).toLongLong(), 2);
        QCOMPARE(inside.first().value(7).toString(), u"İçeride"_s);
        f.presence = ReportFilter::Presence::Outside;
        QCOMPARE(run(ReportKind::InOut, f).size(), 3);
        f.presence = ReportFilter::Presence::All;
        f.zone = 1;
        QCOMPARE(ReportFixture::column(run(ReportKind::InOut, f), 1), ids({ 1, 2, 4 }));

        f = ReportFilter();
        f.day = ReportFixture::day();
        const QList<QVariantList> month = run(ReportKind::Monthly, f);
        QCOMPARE(ReportFixture::column(month, 0), ids({ 1, 2, 4 }));
        QCOMPARE(month.first().size(), 4 + 31 + 2);
        QCOMPARE(month.at(0).value(3 + 13).toString(), u"23:59-23:59"_s);
        QCOMPARE(month.at(0).value(3 + 14).toString(), u"00:00-17:30"_s);
        QCOMPARE(month.at(0).value(35).toLongLong(), 2);
        QCOMPARE(month.at(0).value(36).toLongLong(), 17 * 60 + 30);
        QCOMPARE(month.at(1).value(3 + 15).toString(), u"00:00-00:00"_s);
        QCOMPARE(month.at(2).value(3 + 14).toString(), u"08:00-08:00"_s);
        QCOMPARE(ReportRowSource::count(db(), ReportBuilder::build(db(), ReportKind::Monthly, f)), 3);
    }

    void identicalRecordsListedOnceAcrossPages()
    {
        QString error;
        Database& target = const_cast<Database&>(db());
        QVERIFY2(ReportFixture::addRepeats(target, &error), qPrintable(error));
        ReportFilter f;
        f.allDates = false;
        f.dateStart = ReportFixture::repeatDay();
        const ReportStatement st = ReportBuilder::build(db(), ReportKind::Access, f);
        // Person 2's granted and denied passages of one second differ in their result: two rows.
        QCOMPARE(ReportRowSource::count(db(), st), 7);
        // Steps that end a page inside a second and inside a group of copies; a file reads through.
        for (int step : { 1, 2, 3, 100, 0 }) {
            ReportRowSource source;
            QVERIFY(source.open(db(), st, nullptr,
                                step ? ReportRowSource::Reading::Screens : ReportRowSource::Reading::Through));
            step = step ? step : 4;
            QList<QVariantList> rows;
            while (!source.atEnd())
                rows += source.fetch(step);
            QCOMPARE(ReportFixture::column(rows, 0), ids({ 6, 1, 2, 2, 3, 4, 5 }));
            QCOMPARE(rows.at(2).value(14).toString(), u"Geçiş Reddedildi"_s);
            QCOMPARE(rows.at(3).value(14).toString(), u"Geçiş Onaylandı"_s);
        }
        // Person 2's denied request is a row of its own; door operations keep every stored copy.
        f.result = ReportFilter::Result::Denied;
        QCOMPARE(ReportFixture::column(run(ReportKind::Access, f), 0), ids({ 2 }));
        f.result = ReportFilter::Result::All;
        QCOMPARE(ReportFixture::column(run(ReportKind::DoorOperations, f), 0), ids({ 6, 6 }));
        QVERIFY2(ReportFixture::removeRepeats(target, &error), qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(ReportStatementsTest)
#include "tst_ReportStatements.moc"
