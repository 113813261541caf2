#pragma once

#include "operations/users/UserSelection.h"
#include "protocol/UserRecord.h"

#include <QByteArray>
#include <QHash>
#include <QList>

class Database;

// The users of a send in ID order: those that travel to the panels, and the IDs of those whose
// stored card number does not fit the card field (old databases, other stations) and so stay
// behind rather than reach a panel as another number.
struct SendableUsers
{
    QList<UserRecord> sendable;
    QList<qint32> refused;
    // fingerprint() of each sendable user, by ID; filled by addFingerprints() for those who
    // compare the same list with many panels.
    QHash<qint32, QByteArray> fingerprints;

    bool isEmpty() const { return sendable.isEmpty() && refused.isEmpty(); }

    // All users with an ID above 0, or those of the selection's range.
    static SendableUsers load(const Database& db, const UserSelection& selection);
    void addFingerprints();
    // What a user is as far as a panel is concerned: its user block with the empty temporary-group
    // date and time left at a fixed moment, so that the same row always gives the same text.
    static QByteArray fingerprint(const UserRecord& user);
};
