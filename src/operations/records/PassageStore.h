#pragma once

#include "operations/records/RecordKey.h"
#include "operations/records/RecordRow.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

class Database;

// The one writer of AccessDatas. Passages downloaded from a panel's memory, pushed live and
// let through by the operator all go in here: one column list, one lock between writers, one
// zone mapping (door -> local zone -> global zone) and one rule for passages already stored.
//
// The rule: a passage is matched on every field the panel reports (RecordKey) and counted rather
// than only looked for: the n-th passage with a key is new while fewer than n such rows are
// stored, so storing the same passages twice adds nothing and two real passages alike are both
// kept. What a panel's memory holds is matched only against rows stored since that memory was
// last erased; a live frame, which may arrive after an erase for a passage made before it, is
// matched against every row.
class PassageStore
{
public:
    // Who passed, when the caller knows it already (the operator's own passage).
    struct Person
    {
        std::optional<UserType> userType;
        std::optional<qint64> visitorNo;
    };

    struct Passage
    {
        qint32 panel = 0;
        qint32 door = 0;
        qint32 userId = 0; // a person's number, or the operation code of a door event
        qint64 cardId = 0;
        QDateTime time;
        Direction direction = Direction::Entry;
        PassageCode code = PassageCode::Denied;
        // The local zone the panel reported with the passage, if it did.
        std::optional<qint32> reportedZone;
        // Empty: the user type and the visit are found from the card.
        std::optional<Person> person;

        RecordKey key() const;
    };

    // Told now and then while rows are prepared: done of total.
    using Progress = std::function<void(int done, int total)>;

    struct Options
    {
        // Skip the passages already stored; the operator's own passages are always new.
        bool skipStored = true;
        // The passages come from the panels' memories: compare with rows stored since each
        // panel's last erase only.
        bool sinceLastErase = false;
        // How many passages of each key the caller has handed in before (the live monitor's
        // memory), counted towards n in the rule above.
        const QHash<RecordKey, int>* handedInBefore = nullptr;
        Progress progress;
    };

    struct Outcome
    {
        // The rows written, with their "Kayit No", in the order of the passages.
        QList<RecordRow> stored;
        int duplicates = 0;
        // How many passages of each key this call was handed.
        QHash<RecordKey, int> handedIn;
    };

    explicit PassageStore(Database& db);

    // All or nothing, in one transaction: on failure nothing is written and error says why.
    bool store(const QList<Passage>& passages, const Options& options, Outcome* outcome, QString* error = nullptr);

private:
    bool storedCounts(const QList<Passage>& passages, bool sinceLastErase, QHash<RecordKey, int>& counts,
                      QString* error) const;
    bool storedCountsOfPanel(qint32 panel, qint64 after, const QList<RecordKey>& keys, QHash<RecordKey, int>& counts,
                             QString* error) const;

    Database& m_db;
};
