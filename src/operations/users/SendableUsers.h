#pragma once

#include "operations/users/UserSelection.h"
#include "protocol/UserRecord.h"

#include <QByteArray>
#include <QList>

class Database;

// The users of a send in ID order: those that travel to the panels, and the IDs of those whose
// stored card number does not fit the card field (old databases, other stations) and so stay
// behind rather than reach a panel as another number.
struct SendableUsers
{
    QList<UserRecord> sendable;
    QList<qint32> refused;
    // fingerprint() of each sendable user, in the same order; filled by addFingerprints() for
    // those who compare the same list with many panels.
    QList<QByteArray> fingerprints;

    bool isEmpty() const { return sendable.isEmpty() && refused.isEmpty(); }

    // All users with an ID above 0, or those of the selection's range.
    static SendableUsers load(const Database& db, const UserSelection& selection);
    void addFingerprints();
    // The stored fingerprint of sendable user `index`, or one worked out now.
    QByteArray fingerprintAt(qsizetype index) const;
    // What a user is as far as a panel is concerned: its user block with the empty temporary-group
    // date and time left at a fixed moment, so that the same row always gives the same text.
    static QByteArray fingerprint(const UserRecord& user);
};
