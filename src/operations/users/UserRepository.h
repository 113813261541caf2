#pragma once

#include "operations/users/UserRow.h"
#include "store/Message.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <optional>

class Database;

// Users as the windows and the command line see them: listing, searching, names for lists, and
// adding, changing and deleting one row with the station's checks. A refused change leaves the table as
// it was. Rights are the caller's business (checkAdministratorRights before a change).
class UserRepository
{
public:
    explicit UserRepository(const Database& db);

    // Rows in ID order; with a search text only those whose ID, card number, name or surname
    // contains it (case-insensitive). limit < 0: all.
    QList<UserRow> list(const QString& search = QString(), int limit = -1, QString* error = nullptr) const;
    int count(QString* error = nullptr) const;
    // Rows of one user type (0 personnel, 1 visitor card) in ID order; with numberedOnly, only
    // those whose ID is above 0.
    QList<UserRow> listOfType(qint32 userType, bool numberedOnly, QString* error = nullptr) const;
    // ID -> name ("Adi Soyadi") of those of these IDs that are in the table.
    QHash<qint32, QString> namesOf(const QList<qint32>& ids, QString* error = nullptr) const;
    std::optional<UserRow> byRecordNo(qint64 recordNo) const;
    std::optional<UserRow> byId(qint32 id) const;
    std::optional<UserRow> byCard(qint64 cardId) const;
    // The highest ID in the table, 0 when it is empty.
    qint32 highestId() const;

    // The table's edited columns (all but the row key), in the order the users page shows them.
    static const QStringList& columns();

    // The check of an edited row: "Kullanıcı ID, 1-20000 arasında bir sayı olmalıdır!" for an ID
    // outside 1..20000, "Kart ID hatalı!" for a card number the panels cannot carry; an empty
    // message when it may be stored.
    static Message validate(const UserRow& row);

    // Stores a new row and sets its recordNo. A duplicate ID or card gives "Birincil anahtar
    // hatası! Bu değer daha önce girilmişti. Lütfen kontrol ediniz!" through error, followed on
    // a line of its own by the card or ID and the user who already holds it.
    bool add(UserRow& row, Message* error = nullptr);
    // Changes the row with row.recordNo.
    bool update(const UserRow& row, Message* error = nullptr);
    bool remove(qint64 recordNo, Message* error = nullptr);

    // Writes the fields a panel answered for a user: the row with that ID is updated (names and
    // the other columns kept), or a new row is added.
    bool storeFromPanel(const UserRecord& user, QString* error = nullptr);

private:
    // The duplicate refusal with the holder of the card or ID the row repeats named after it.
    Message duplicateOf(const UserRow& row) const;

    const Database& m_db;
};
