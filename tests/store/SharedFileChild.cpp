// A second process for the shared-file test. "write PATH" holds one connection and commits one
// row after another, printing each committed count, and every few rows opens and closes a further
// connection of its own (as the station's worker threads do). "read PATH N" opens, reads and
// closes the database N times.
#include "store/Database.h"

#include <QCoreApplication>
#include <QStringList>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

int writeRows(const QString& path)
{
    Database db;
    QString error;
    if (!db.open(path, Database::OpenMode::CreateIfMissing, &error)
        || !db.exec(u"CREATE TABLE IF NOT EXISTS Rows (n INTEGER PRIMARY KEY, filler TEXT)"_s, {}, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 2;
    }
    const QString filler(200, u'x');
    for (qint64 n = 1;; ++n) {
        if (!db.exec(u"INSERT INTO Rows (n, filler) VALUES (?, ?)"_s, { n, filler }, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 3;
        }
        std::printf("%lld\n", static_cast<long long>(n));
        std::fflush(stdout);
        if (n % 10 == 0) {
            Database other;
            if (!other.open(path, Database::OpenMode::ExistingOnly, &error)) {
                std::fprintf(stderr, "%s\n", qPrintable(error));
                return 4;
            }
            other.scalar(u"SELECT count(*) FROM Rows"_s);
        }
    }
}

int readRepeatedly(const QString& path, int times)
{
    for (int i = 0; i < times; ++i) {
        Database db;
        QString error;
        if (!db.open(path, Database::OpenMode::ExistingOnly, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 2;
        }
        db.scalar(u"SELECT count(*) FROM Rows"_s);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args.at(1) == u"write"_s)
        return writeRows(args.at(2));
    if (args.size() >= 4 && args.at(1) == u"read"_s)
        return readRepeatedly(args.at(2), args.at(3).toInt());
    std::fprintf(stderr, "usage: write PATH | read PATH N\n");
    return 1;
}
