// The access-record grid's model over a real database (SQLite, and PostgreSQL when configured):
// newest first, a page at a time as the view scrolls, names joined in, newer rows put on top
// without reading the table again.

#include "operations/records/RecordRow.h"
#include "support/TestDatabases.h"
#include "ui/records/AccessRecordModel.h"
#include "ui/records/PassageColumns.h"
#include "ui/records/PassageNames.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
RecordRow record(qint32 userId, PassageCode code, int second)
{
    RecordRow r;
    r.panelId = 1 + second % 3;
    r.door = 1 + second % 4;
    r.userId = userId;
    r.cardId = 5000 + userId;
    r.time = QDateTime(QDate(2024, 3, 1), QTime(8, 0)).addSecs(second);
    r.code = code;
    return r;
}

bool store(Database& db, const QList<RecordRow>& rows)
{
    QList<QVariantList> values;
    for (const RecordRow& r : rows)
        values << r.values(db);
    QString error;
    const bool ok = db.insertRows(u"AccessDatas"_s, RecordRow::columns(), values, &error);
    if (!ok)
        qWarning() << error;
    return ok;
}

QList<qint64> recordNumbers(const AccessRecordModel& model)
{
    QList<qint64> numbers;
    for (int row = 0; row < model.rowCount(); ++row)
        numbers << model.passage(row).record.recordNo;
    return numbers;
}
} // namespace

class AccessRecordModelTest : public QObject
{
    Q_OBJECT

private slots:
    void pagesNewestFirstWithNames_data() { TestDatabases::addEngineRows(); }
    void pagesNewestFirstWithNames()
    {
        QFETCH(int, engine);
        KX_REQUIRE_ENGINE(TestDatabases::Engine(engine));
        TestDatabases databases;
        Database db;
        QVERIFY(databases.openFresh(TestDatabases::Engine(engine), db));
        {
            PassageNames names(db);
            // No model tester here: it would fetch further pages itself on every reset.
            AccessRecordModel model(db, names);
            model.setPageSize(100);
            QVERIFY(model.reload());
            QCOMPARE(model.rowCount(), 0);
            QVERIFY(!model.canFetchMore(QModelIndex()));

            QVERIFY(db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s },
                              { 7, 5007, u"Ayşe"_s, u"Yılmaz"_s }));
            qint64 visit = 0;
            QVERIFY(db.insert(u"Visitors"_s, { u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s }, { 5007, u"Veli"_s, u"Konuk"_s },
                              nullptr, &visit, u"Kayit No"_s));
            QList<RecordRow> rows;
            for (int i = 0; i < 447; ++i)
                rows << record(100 + i, PassageCode::Granted, i);
            rows << record(7, PassageCode::Granted, 500); // a person
            RecordRow visitor = record(7, PassageCode::Granted, 501);
            visitor.visitorNo = visit; // the visitor's own name wins over the card holder's
            rows << visitor;
            rows << record(7, PassageCode::OperatorOpen, 502); // a door operation whose code equals the person's number
            QVERIFY(store(db, rows));
            QVERIFY(model.reload());
            QCOMPARE(model.rowCount(), 100);
            const QList<qint64> first = recordNumbers(model);
            QVERIFY(std::is_sorted(first.crbegin(), first.crend()));
            QCOMPARE(model.passage(0).name, QString());
            QCOMPARE(model.index(0, PassageColumns::Event).data().toString(), u"Operatör Açma"_s);
            QCOMPARE(model.passage(1).name, u"Veli Konuk"_s);
            QCOMPARE(model.passage(2).name, u"Ayşe Yılmaz"_s);

            // The view asks for the next pages as it reaches the end.
            QTableView view;
            view.setModel(&model);
            view.resize(600, 300);
            view.show();
            for (int i = 0; i < 10 && model.canFetchMore(QModelIndex()); ++i) {
                view.scrollToBottom();
                QCoreApplication::processEvents();
            }
            QCOMPARE(model.rowCount(), 450);
            const QList<qint64> all = recordNumbers(model);
            QCOMPARE(QSet<qint64>(all.cbegin(), all.cend()).size(), 450);

            // Newer rows go on top; rows already shown are not added twice; no reset.
            QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
            QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
            const qint64 newest = model.newestRecordNo();
            PassageRow again{ model.passage(5).record, QString(), QString() };
            PassageRow newer1{ record(1, PassageCode::Granted, 900), QString(), QString() };
            newer1.record.recordNo = newest + 1;
            PassageRow newer2{ record(2, PassageCode::Denied, 901), QString(), QString() };
            newer2.record.recordNo = newest + 2;
            model.addNewer({ again, newer1, newer2 });
            QCOMPARE(reset.size(), 0);
            QCOMPARE(inserted.size(), 1);
            QCOMPARE(model.rowCount(), 452);
            QCOMPARE(model.passage(0).record.recordNo, newest + 2);
            QCOMPARE(model.passage(1).record.recordNo, newest + 1);
            model.addNewer({ again });
            QCOMPARE(model.rowCount(), 452);

            // Live rows get their names from a look-up that remembers who is unknown, too.
            const QList<PassageRow> resolved
                = names.resolve({ record(7, PassageCode::Granted, 1), record(10, PassageCode::UnknownCard, 2),
                                  record(7, PassageCode::OperatorClose, 3) });
            QCOMPARE(resolved.at(0).name, u"Ayşe Yılmaz"_s);
            QCOMPARE(resolved.at(1).name, QString());
            QCOMPARE(resolved.at(1).eventText, u"Tanımsız Kart"_s);
            QCOMPARE(resolved.at(2).name, QString());
            QVERIFY(db.insert(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s }, { 10, 5010, u"Ece"_s }));
            QCOMPARE(names.resolve({ record(10, PassageCode::Granted, 4) }).at(0).name, QString());
            names.clear();
            QCOMPARE(names.resolve({ record(10, PassageCode::Granted, 4) }).at(0).name, u"Ece"_s);
        }
        db.close();
    }
};

QTEST_MAIN(AccessRecordModelTest)
#include "tst_AccessRecordModel.moc"
