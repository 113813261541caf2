#pragma once

#include "operations/users/SendableUsers.h"

#include <QByteArray>
#include <QList>
#include <QMap>

// How the users of the database differ from what a panel acknowledged: who is new to it, whose
// data changed, and who is no longer in Users. A user whose card number does not fit is neither
// sent nor taken off a panel.
struct UserChanges
{
    QList<UserRecord> added;
    QList<UserRecord> changed;
    QList<qint32> removed;

    static UserChanges between(const SendableUsers& now, const QMap<qint32, QByteArray>& held);

    // The added and changed users in ID order.
    QList<UserRecord> toSend() const;
    bool isEmpty() const { return added.isEmpty() && changed.isEmpty() && removed.isEmpty(); }
};
