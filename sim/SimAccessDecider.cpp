#include "SimAccessDecider.h"

#include "SimPanelState.h"

#include <algorithm>

namespace {
// A passage through a door under a canteen time group counts in the window it fell in.
void countCanteen(SimPanelState& state, int groupNumber, const SimRecord& record)
{
    const auto group = state.groups.constFind(groupNumber);
    if (group == state.groups.constEnd() || record.door < 1 || record.door > 4)
        return;
    const auto timeGroup = state.timeGroups.constFind(group->doorTimeGroup[record.door - 1]);
    if (timeGroup == state.timeGroups.constEnd() || timeGroup->type != 10)
        return;
    const QTime now = record.time.time();
    for (int i = 0; i < 3; ++i) {
        const QTime start = timeGroup->startTimes[i];
        if (start.isValid() && start != QTime(0, 0) && now >= start
            && start.msecsTo(now) < qint64(timeGroup->extraHours) * 3600 * 1000) {
            int& count = state.canteenCounts[record.userId][i];
            count = std::min(count + 1, 99);
            return;
        }
    }
}
} // namespace

int SimAccessDecider::effectiveGroup(const SimPanelState& state, int userId, const QDateTime& moment)
{
    const auto it = state.users.constFind(userId);
    if (it == state.users.constEnd())
        return 0;
    const SimUser& user = it.value();
    if (user.temporaryActive && user.temporaryUntil.isValid() && moment < user.temporaryUntil)
        return user.temporaryGroup;
    if (user.calendarActive) {
        const auto calendar = state.calendars.constFind(user.calendar);
        if (calendar != state.calendars.constEnd())
            return calendar->groupAt(moment);
    }
    return user.group;
}

SimRecord SimAccessDecider::decide(const SimPanelState& state, int door, qint64 card, const QDateTime& moment,
                                   std::optional<Direction> direction)
{
    SimRecord record;
    record.door = door;
    record.card = card;
    record.time = moment;
    record.code = PassageCode::Denied;
    if (door < 1 || door > 4)
        return record;
    const SimPanelSettings::Door& doorSettings = state.settings.doors[door - 1];
    record.localZone = doorSettings.localZone == 2 ? 2 : 1;
    record.direction = direction.value_or(doorSettings.entry ? Direction::Entry : Direction::Exit);
    if (!doorSettings.active)
        return record;

    const SimUser* user = state.userByCard(card);
    if (!user) {
        record.code = PassageCode::UnknownCard;
        return record;
    }
    record.userId = user->id;

    const int groupNumber = effectiveGroup(state, user->id, moment);
    const auto groupIt = state.groups.constFind(groupNumber);
    if (groupIt == state.groups.constEnd())
        return record;
    const SimGroup& group = groupIt.value();
    if (!group.doorAllowed[door - 1])
        return record;
    const int timeGroupNumber = group.doorTimeGroup[door - 1];
    if (timeGroupNumber != 0) {
        const auto timeGroup = state.timeGroups.constFind(timeGroupNumber);
        if (timeGroup == state.timeGroups.constEnd() || !timeGroup->allows(moment))
            return record;
    }
    if (group.dailyApprovalRequired && !state.dailyApproved.contains(user->id))
        return record;
    if (state.settings.repeatBlockSeconds > 0 && !group.repeatBlockOff) {
        const auto last = state.lastPassage.constFind(user->id);
        if (last != state.lastPassage.constEnd() && last->secsTo(moment) < state.settings.repeatBlockSeconds)
            return record;
    }

    const bool antiPassbackOn
        = state.settings.localAntiPassback[record.localZone - 1] || state.settings.globalAntiPassback;
    if (antiPassbackOn && !group.antiPassbackOff) {
        const auto last = state.antiPassback.constFind(user->id * 10 + record.localZone);
        if (last != state.antiPassback.constEnd() && last.value() == record.direction) {
            record.code = PassageCode::AntiPassback;
            return record;
        }
    }

    const bool entry = record.direction == Direction::Entry;
    if (entry && group.accessLimit > 0 && state.accessCounts.value(user->id) >= group.accessLimit)
        return record;
    if (entry && group.insideLimit > 0 && state.insideCounts.value(groupNumber) >= group.insideLimit)
        return record;
    if (entry && state.settings.localCapacityOn && !group.localCapacityOff
        && state.zoneCounters[record.localZone - 1] >= state.settings.localCapacity)
        return record;

    record.code = PassageCode::Granted;
    return record;
}

void SimAccessDecider::commit(SimPanelState& state, const SimRecord& record)
{
    if (record.code != PassageCode::Granted || record.userId <= 0)
        return;
    const bool entry = record.direction == Direction::Entry;
    const int groupNumber = effectiveGroup(state, record.userId, record.time);
    state.antiPassback.insert(record.userId * 10 + record.localZone, record.direction);
    state.lastPassage.insert(record.userId, record.time);
    int& zone = state.zoneCounters[record.localZone - 1];
    int& inside = state.insideCounts[groupNumber];
    if (entry) {
        state.accessCounts[record.userId] += 1;
        countCanteen(state, groupNumber, record);
        zone = std::min(zone + 1, 9999);
        inside = std::min(inside + 1, 9999);
    } else {
        zone = std::max(zone - 1, 0);
        inside = std::max(inside - 1, 0);
    }
}

void SimAccessDecider::nightClearing(SimPanelState& state, const QDateTime& moment)
{
    const QDate today = moment.date();
    if (!state.lastNight.isValid()) {
        state.lastNight = today;
        return;
    }
    if (today <= state.lastNight)
        return;
    state.lastNight = today;
    for (const SimGroup& group : std::as_const(state.groups)) {
        if (group.clearInsideAtNight)
            state.insideCounts.remove(group.number);
    }
}
