#pragma once

#include <optional>

class Database;
class Operator;
class OperatorSession;
class QWidget;

// The settings window's way to the global zone windows, which live with the zones: the zone
// window (frmPanelGroups, "Global Kapı Bölgesi Ayarları") and the picker "Global Bölge Seçimi"
// that every caller shares.

// Opens the global zone window over parent and returns when it is closed.
void openPanelGroups(QWidget* parent, Database& db, OperatorSession& session, Operator& op);
// Lets the person choose a global zone; its number, or nothing when none was chosen.
std::optional<int> pickGlobalZone(QWidget* parent, Database& db);
