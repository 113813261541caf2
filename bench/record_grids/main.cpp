// The monitoring grid taking live passages: appending each stored batch to the grid's own rows
// (names looked up for the batch) against the baseline of reading the grid's newest 5000 rows
// again with their names after every batch, as a grid bound to a query would. Both run on the
// same SQLite database holding 50000 passages and 20000 people; storing the rows is left out, it
// costs both the same.

#include "operations/records/RecordRow.h"
#include "store/Database.h"
#include "support/TestDatabases.h"
#include "ui/live/LivePassageModel.h"
#include "ui/records/PassageNames.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSqlQueryModel>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {
constexpr int kStored = 50000;
constexpr int kPeople = 20000;
constexpr int kBatch = 5;
constexpr int kWindow = LivePassageModel::DefaultCapacity;

RecordRow passage(int n)
{
    RecordRow r;
    r.recordNo = n + 1;
    r.panelId = 1 + n % 64;
    r.door = 1 + n % 4;
    r.userId = 1 + (n * 7) % kPeople;
    r.cardId = 1000000 + r.userId;
    r.time = QDateTime(QDate(2024, 1, 1), QTime(0, 0)).addSecs(n);
    r.code = n % 10 == 0 ? PassageCode::Denied : PassageCode::Granted;
    return r;
}

bool fill(Database& db)
{
    QList<QVariantList> people;
    for (int id = 1; id <= kPeople; ++id)
        people << QVariantList{ id, 1000000 + id, QString(u"Ad"_s + QString::number(id)), u"Soyad"_s };
    if (!db.insertRows(u"Users"_s, { u"ID"_s, u"Kart ID"_s, u"Adi"_s, u"Soyadi"_s }, people))
        return false;
    QList<QVariantList> rows;
    for (int n = 0; n < kStored; ++n)
        rows << passage(n).values(db);
    return db.insertRows(u"AccessDatas"_s, RecordRow::columns(), rows);
}

// Microseconds per batch of appending `batches` batches of live rows.
double appendPerBatch(Database& db, int batches)
{
    PassageNames names(db);
    LivePassageModel model;
    QElapsedTimer timer;
    timer.start();
    for (int b = 0; b < batches; ++b) {
        QList<RecordRow> rows;
        for (int i = 0; i < kBatch; ++i)
            rows << passage(kStored - batches * kBatch + b * kBatch + i);
        model.append(names.resolve(rows));
    }
    return timer.nsecsElapsed() / 1000.0 / batches;
}

// Microseconds per batch of reading the grid's window again after each batch.
double requeryPerBatch(Database& db, int batches)
{
    QSqlQueryModel model;
    QElapsedTimer timer;
    timer.start();
    for (int b = 0; b < batches; ++b) {
        const qint64 newest = kStored - batches * kBatch + (b + 1) * kBatch;
        QSqlQuery q(db.connection());
        q.prepare(u"SELECT a.\"Kayit No\", a.\"Tarih\", a.\"Panel ID\", a.\"Kapi ID\", a.\"ID\", a.\"Kart ID\", "
                  u"u.\"Adi\", u.\"Soyadi\", a.\"Gecis Tipi\", a.\"Kod\" FROM \"AccessDatas\" a "
                  u"LEFT JOIN \"Users\" u ON u.\"ID\" = a.\"ID\" WHERE a.\"Kayit No\" <= ? "
                  u"ORDER BY a.\"Kayit No\" DESC LIMIT ?"_s);
        q.addBindValue(newest);
        q.addBindValue(kWindow);
        q.exec();
        model.setQuery(std::move(q));
        // Positioning on the newest row of a grid sorted oldest first needs every row.
        while (model.canFetchMore())
            model.fetchMore();
    }
    return timer.nsecsElapsed() / 1000.0 / batches;
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTextStream out(stdout);
    TestDatabases databases;
    Database db;
    QString error;
    if (!databases.openFresh(TestDatabases::SQLite, db, true, &error) || !fill(db)) {
        out << "cannot prepare the database: " << error << Qt::endl;
        return 1;
    }
    const double requery = requeryPerBatch(db, 40);
    const double append = appendPerBatch(db, 1000);
    out << "live batches of " << kBatch << " rows, grid of " << kWindow << " rows, " << kStored << " passages stored"
        << Qt::endl;
    out << "requery per batch (baseline): " << QString::number(requery, 'f', 1) << " us" << Qt::endl;
    out << "append per batch:             " << QString::number(append, 'f', 1) << " us" << Qt::endl;
    out << "ratio (baseline / append):    " << QString::number(requery / append, 'f', 1) << Qt::endl;
    db.close();
    return 0;
}
