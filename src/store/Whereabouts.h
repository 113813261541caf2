#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

class Database;

// Where each person was last seen: per person, global zone and panel the latest granted
// passage of personnel, the row "who is inside now" is read from. It is written in the same
// transaction as the passages, so it always agrees with a scan of AccessDatas; latest means the
// greatest date, then the greatest "Kayit No", as the scan orders them.
class Whereabouts
{
public:
    // One stored passage, as the table needs it.
    struct Passage
    {
        qint64 recordNo = 0;
        qint32 userId = 0;
        qint32 globalZone = 1;
        qint32 panel = 0;
        qint32 door = 0;
        qint64 cardId = 0;
        qint32 direction = 0;
        QDateTime time;
    };

    static QString table();

    // Takes in passages just stored (only granted passages of personnel count; the caller
    // filters). An older passage never replaces a newer one, whatever order they arrive in.
    static bool record(Database& db, const QList<Passage>& passages, QString* error = nullptr);
    // Makes the table again from every stored passage; the repair after anything went around it.
    // Returns the number of rows made, -1 on failure. Runs in the caller's transaction, if any.
    static qint64 rebuild(Database& db, QString* error = nullptr);
    // Forgets what only passages dated before cutoff said, after those passages are removed.
    static bool forgetBefore(Database& db, const QDateTime& cutoff, QString* error = nullptr);
};
