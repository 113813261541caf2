#pragma once

#include "protocol/Direction.h"
#include "protocol/PassageCode.h"
#include "protocol/UserType.h"

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QStringList>
#include <QVariantList>
#include <optional>

class Database;
class QSqlRecord;

// One passage as it stands in AccessDatas, with the row number the database gave it. The live
// monitor hands these to the window so a grid can append them without asking the database again.
struct RecordRow
{
    qint64 recordNo = 0; // "Kayit No"; 0 until stored
    qint32 panelId = 0;
    qint32 localZone = 1;
    qint32 globalZone = 1;
    qint32 door = 0;
    qint32 userId = 0; // a person's number, or the operation code of a door event
    qint64 cardId = 0;
    QDateTime time;
    Direction direction = Direction::Entry;
    PassageCode code = PassageCode::Denied;
    // Empty when the card belongs to no user.
    std::optional<UserType> userType;
    // The visit ("Visitors"."Kayit No") of a visitor card, empty when there is none.
    std::optional<qint64> visitorNo;

    // The columns written, in the order the station writes them.
    static QStringList columns();
    // The values for columns(), ready to bind.
    QVariantList values(const Database& db) const;
    // "Kayit No" and columns(): what a stored passage is read back from.
    static QStringList storedColumns();
    // A stored passage from a result row that holds storedColumns() under their own names, in any
    // order and among other columns.
    static RecordRow read(const QSqlRecord& fields);

    bool operator==(const RecordRow&) const = default;
};

Q_DECLARE_METATYPE(RecordRow)
Q_DECLARE_METATYPE(QList<RecordRow>)
