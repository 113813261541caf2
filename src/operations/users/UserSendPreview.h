#pragma once

#include "operations/users/UserChanges.h"

#include <QDateTime>
#include <QList>

class Database;
class PanelRoster;

// What a send of users would take to each panel, worked out from the database and what each
// panel acknowledged before, without connecting to any panel.
struct UserSendPreview
{
    qint32 panelNumber = 0;
    // When the panel last took users; invalid when never.
    QDateTime lastSent;
    // How the database differs from what the panel acknowledged.
    UserChanges changes;
    // "%NC" requests the send would make, and "%DC" requests (only a send of changed users
    // deletes).
    int toSend = 0;
    int toDelete = 0;

    // For every panel a walk over all panels would visit, in roster order.
    static QList<UserSendPreview> forPanels(Database& db, const PanelRoster& roster, bool changedOnly,
                                            QString* error = nullptr);
};
