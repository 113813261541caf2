#pragma once

#include <QtGlobal>

class Database;

// The port the panels are told to push their live frames to: the commonest
// "Panel Remote TCP Port" of the panel list, 0 when no panel has one.
quint16 PanelsPushPort(const Database& db);
