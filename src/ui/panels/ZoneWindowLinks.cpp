#include "ui/panels/ZoneWindowLinks.h"

#include <QtGlobal>

// Placeholders until the zone windows are joined in: nothing opens and nothing is chosen.

void openPanelGroups(QWidget* parent, Database& db, OperatorSession& session, Operator& op)
{
    Q_UNUSED(parent);
    Q_UNUSED(db);
    Q_UNUSED(session);
    Q_UNUSED(op);
}

std::optional<int> pickGlobalZone(QWidget* parent, Database& db)
{
    Q_UNUSED(parent);
    Q_UNUSED(db);
    return std::nullopt;
}
