#pragma once

#include <QFuture>

class Database;
struct ReportStatement;

// Counts a report's rows on a thread of its own, over a connection of its own, so that a window
// shows the first rows at once while the database counts the rest (on millions of rows that
// takes seconds).
class ReportCount
{
public:
    // The number of rows, or -1 when the database could not count them.
    static QFuture<qint64> start(const Database& db, const ReportStatement& statement);
};
