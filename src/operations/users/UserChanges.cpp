#include "operations/users/UserChanges.h"

#include <QSet>
#include <algorithm>

UserChanges UserChanges::between(const SendableUsers& now, const QMap<qint32, QByteArray>& held)
{
    UserChanges changes;
    // Both lists are in ID order: one walk down each, no look-ups, for the 20000 users of every panel.
    const QSet<qint32> refused(now.refused.cbegin(), now.refused.cend());
    auto kept = held.cbegin();
    // Held IDs passed over are no longer sendable: removed, unless their card number is refused.
    const auto passOver = [&] {
        if (!refused.contains(kept.key()))
            changes.removed << kept.key();
        ++kept;
    };
    for (qsizetype i = 0; i < now.sendable.size(); ++i) {
        const UserRecord& user = now.sendable.at(i);
        while (kept != held.cend() && kept.key() < user.id)
            passOver();
        if (kept == held.cend() || kept.key() != user.id) {
            changes.added << user;
            continue;
        }
        if (kept.value() != now.fingerprintAt(i))
            changes.changed << user;
        ++kept;
    }
    while (kept != held.cend())
        passOver();
    return changes;
}

QList<UserRecord> UserChanges::toSend() const
{
    QList<UserRecord> users = added + changed;
    std::sort(users.begin(), users.end(), [](const UserRecord& a, const UserRecord& b) { return a.id < b.id; });
    return users;
}
