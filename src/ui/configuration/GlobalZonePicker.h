#pragma once

#include "operations/configuration/ZoneRepository.h"

#include <optional>

class Database;
class QWidget;

// The zone picker "Global Bölge Seçimi" every zone field opens (panel settings, access groups):
// the global zones in number order with their numbers and names. It opens on the zone `current`
// when listed and returns the chosen zone, or nothing when the person closed it or the list is
// empty (a number can still be typed into the field).
std::optional<ZoneRepository::Row> pickGlobalZone(QWidget* parent, const Database& db, int current = 0);
