#include "operations/users/UserChanges.h"

#include <QSet>
#include <algorithm>

namespace {

QByteArray fingerprintOf(const SendableUsers& users, const UserRecord& user)
{
    const auto known = users.fingerprints.constFind(user.id);
    return known != users.fingerprints.cend() ? known.value() : SendableUsers::fingerprint(user);
}

} // namespace

UserChanges UserChanges::between(const SendableUsers& now, const QMap<qint32, QByteArray>& held)
{
    UserChanges changes;
    QSet<qint32> present;
    for (const UserRecord& user : now.sendable) {
        present.insert(user.id);
        const auto it = held.constFind(user.id);
        if (it == held.cend())
            changes.added << user;
        else if (it.value() != fingerprintOf(now, user))
            changes.changed << user;
    }
    for (qint32 id : now.refused)
        present.insert(id);
    for (auto it = held.cbegin(); it != held.cend(); ++it) {
        if (!present.contains(it.key()))
            changes.removed << it.key();
    }
    return changes;
}

QList<UserRecord> UserChanges::toSend() const
{
    QList<UserRecord> users = added + changed;
    std::sort(users.begin(), users.end(), [](const UserRecord& a, const UserRecord& b) { return a.id < b.id; });
    return users;
}
