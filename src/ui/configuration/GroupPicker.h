#pragma once

#include "operations/configuration/GroupRepository.h"

#include <optional>

class Database;
class QWidget;

// The group search "Grup Arama": the access groups in number order with their numbers and names.
// It opens on the group `current` when listed and returns the chosen one, or nothing when the
// person closed it or the list is empty.
std::optional<GroupRepository::Row> pickGroup(QWidget* parent, const Database& db, int current = 0);
