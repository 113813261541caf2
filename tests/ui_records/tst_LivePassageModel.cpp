// The monitoring grid's model: rows are only ever appended (never a reset), the window keeps the
// newest rows when it is full, and the cells show what the operator reads.

#include "ui/live/LivePassageModel.h"
#include "ui/records/PassageColumns.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
PassageRow passage(qint64 recordNo, PassageCode code = PassageCode::Granted, Direction direction = Direction::Entry)
{
    PassageRow p;
    p.record.recordNo = recordNo;
    p.record.panelId = 3;
    p.record.door = 2;
    p.record.userId = 41;
    p.record.cardId = 1234567890;
    p.record.time = QDateTime(QDate(2099, 2, 7), QTime(8, 4, 5));
    p.record.code = code;
    p.record.direction = direction;
    return p;
}

QList<qint64> recordNumbers(const LivePassageModel& model)
{
    QList<qint64> numbers;
    for (int row = 0; row < model.rowCount(); ++row)
        numbers << model.index(row, PassageColumns::RecordNo).data().toLongLong();
    return numbers;
}
} // namespace

class LivePassageModelTest : public QObject
{
    Q_OBJECT

private slots:
    void appendsWithoutResetAndKeepsTheNewest()
    {
        LivePassageModel model(3);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

        model.append({ passage(1), passage(2) });
        model.append({});
        QCOMPARE(inserted.size(), 1);

        // Full: the oldest leave from the top, the new ones come in at the end.
        model.append({ passage(3), passage(4) });
        QCOMPARE(removed.size(), 1);
        QCOMPARE(inserted.size(), 2);
        QCOMPARE(recordNumbers(model), (QList<qint64>{ 2, 3, 4 }));

        // A batch larger than the window leaves only its own newest rows.
        model.append({ passage(5), passage(6), passage(7), passage(8), passage(9) });
        QCOMPARE(recordNumbers(model), (QList<qint64>{ 7, 8, 9 }));
        QCOMPARE(reset.size(), 0);

        model.clear();
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(reset.size(), 0);
    }

    void cellsShowThePassage()
    {
        LivePassageModel model;
        PassageRow granted = passage(10, PassageCode::Granted, Direction::Entry);
        granted.name = u"Ayşe Yılmaz"_s;
        granted.eventText = u"Geçiş Onaylandı"_s;
        PassageRow refused = passage(11, PassageCode::UnknownCard, Direction::Exit);
        model.append({ granted, refused });

        auto cell
            = [&](int row, int column, int role = Qt::DisplayRole) { return model.index(row, column).data(role); };
        QCOMPARE(cell(0, PassageColumns::Time).toString(), u"07/02/2099 08:04:05"_s);
        QCOMPARE(cell(0, PassageColumns::Name).toString(), u"Ayşe Yılmaz"_s);
        QCOMPARE(cell(0, PassageColumns::Direction).toString(), u"İçeri"_s);
        QCOMPARE(cell(1, PassageColumns::Direction).toString(), u"Dışarı"_s);
        QCOMPARE(cell(0, PassageColumns::Event).toString(), u"Geçiş Onaylandı"_s);
        // No text for the code: the number itself.
        QCOMPARE(cell(1, PassageColumns::Event).toString(), u"4"_s);
        // Refused passages stand out; granted ones keep the view's colour.
        QVERIFY(!cell(0, PassageColumns::Event, Qt::ForegroundRole).isValid());
        QVERIFY(cell(1, PassageColumns::Event, Qt::ForegroundRole).value<QBrush>().color() != QColor(Qt::black));
        QCOMPARE(cell(1, PassageColumns::Time, Qt::UserRole).toLongLong(), 11);
        QCOMPARE(model.headerData(PassageColumns::Name, Qt::Horizontal).toString(), u"Adı Soyadı"_s);
    }
};

QTEST_MAIN(LivePassageModelTest)
#include "tst_LivePassageModel.moc"
