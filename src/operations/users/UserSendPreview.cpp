#include "operations/users/UserSendPreview.h"

#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelSendLog.h"
#include "operations/users/PanelHeldUsers.h"

QList<UserSendPreview> UserSendPreview::forPanels(Database& db, const PanelRoster& roster, bool changedOnly,
                                                  QString* error)
{
    QList<UserSendPreview> previews;
    const SendableUsers users = SendableUsers::load(db, UserSelection::all());
    const PanelSendLog log(db);
    const PanelHeldUsers heldUsers(db);
    for (const PanelEntry& entry : roster.entries()) {
        if (!entry.isEligible() || !roster.isReachable(entry.position))
            continue;
        UserSendPreview preview;
        preview.panelNumber = entry.panelNumber;
        if (const auto last = log.last(entry.panelNumber, SentData::Users, error))
            preview.lastSent = last->at;
        QMap<qint32, QByteArray> held;
        if (!heldUsers.load(entry.panelNumber, &held, error))
            return {};
        preview.changes = UserChanges::between(users, held);
        preview.toSend = changedOnly ? static_cast<int>(preview.changes.added.size() + preview.changes.changed.size())
                                     : static_cast<int>(users.sendable.size());
        preview.toDelete = changedOnly ? static_cast<int>(preview.changes.removed.size()) : 0;
        previews << preview;
    }
    return previews;
}
