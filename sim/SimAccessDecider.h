#pragma once

#include "SimRecord.h"

#include <QDateTime>
#include <optional>

struct SimPanelState;

// The panel's own access rules: who may pass which door when, and what a passage changes in its
// counters. Works on the panel's state only.
class SimAccessDecider
{
public:
    // Decides a card presented at a door (1..4). `direction` overrides the door's own direction.
    // Nothing is changed.
    static SimRecord decide(const SimPanelState& state, int door, qint64 card, const QDateTime& moment,
                            std::optional<Direction> direction = std::nullopt);
    // Counts a decided passage: anti-passback, access and inside counters, zone counters.
    static void commit(SimPanelState& state, const SimRecord& record);
    // The group a user belongs to at a moment: temporary group, then calendar, then its own group.
    static int effectiveGroup(const SimPanelState& state, int userId, const QDateTime& moment);
    // Clears the inside counts of the groups that ask for it once a new day has begun.
    static void nightClearing(SimPanelState& state, const QDateTime& moment);
};
