#pragma once

#include "operations/configuration/TimeGroupRepository.h"

#include <optional>

class Database;
class QWidget;

// The time group search "Zaman Grup Arama": the time groups in number order with their numbers
// and names. The time groups page moves to the chosen one; an access group's door takes it. It
// opens on the time group `current` when listed and returns the chosen one, or nothing when the
// person closed it or the list is empty.
std::optional<TimeGroupRepository::Entry> pickTimeGroup(QWidget* parent, const Database& db, int current = 0);
