#include "SimCounterCommands.h"

#include "SimAccessDecider.h"
#include "SimCommandContext.h"
#include "SimPanelState.h"
#include "SimText.h"

namespace {
std::optional<int> field(const SimCommandContext& c, int pos, int width, int low, int high)
{
    const auto value = SimText::digits(c.fields, pos, width);
    if (!value || *value < low || *value > high)
        return std::nullopt;
    return value;
}

void readAccessCounter(SimCommandContext& c)
{
    const auto id = field(c, 0, 5, 1, SimPanelState::kUserSlots);
    if (!id) {
        c.refuse();
        return;
    }
    // Remaining passages under the group's limit; a group without a limit reports the most.
    int remaining = 999;
    const int groupNumber = SimAccessDecider::effectiveGroup(c.state, *id, c.state.now());
    const auto group = c.state.groups.constFind(groupNumber);
    if (group != c.state.groups.constEnd() && group->accessLimit > 0)
        remaining = std::max(0, group->accessLimit - c.state.accessCounts.value(*id));
    const std::array<int, 3> canteen = c.state.canteenCounts.value(*id);
    c.answer(SimText::number(std::min(remaining, 999), 3) + SimText::number(canteen[0], 2)
             + SimText::number(canteen[1], 2) + SimText::number(canteen[2], 2));
}

void reader(SimCommandContext& c)
{
    const auto number = field(c, 0, 1, 1, SimPanelState::kReaders);
    if (!number) {
        c.refuse();
        return;
    }
    SimPanelState::Reader& r = c.state.readers[*number - 1];
    if (c.code == "PS") {
        const auto power = field(c, 1, 2, 15, 30);
        if (!power) {
            c.refuse();
            return;
        }
        r.power = *power;
        c.confirm();
    } else if (c.code == "PR") {
        c.answer('O' + SimText::number(r.power, 2));
    } else if (c.code == "LW") {
        const auto buzzer = field(c, 1, 1, 0, 9);
        const auto led = field(c, 2, 1, 0, 9);
        if (!buzzer || !led) {
            c.refuse();
            return;
        }
        r.buzzer = *buzzer;
        r.led = *led;
        c.confirm();
    } else {
        c.answer('O' + SimText::number(r.buzzer, 1) + SimText::number(r.led, 1) + '0');
    }
}

void zoneCounter(SimCommandContext& c)
{
    const auto zone = field(c, 0, 2, 1, 2);
    if (!zone) {
        c.refuse();
        return;
    }
    int& counter = c.state.zoneCounters[*zone - 1];
    if (c.code == "GR") {
        c.answer(SimText::number(counter, 4));
        return;
    }
    const auto value = field(c, 2, 4, 0, 9999);
    if (!value) {
        c.refuse();
        return;
    }
    counter = *value;
    c.statusChanged = true;
    c.confirm();
}

void clearUserAntiPassback(SimCommandContext& c)
{
    const auto id = field(c, 0, 5, 1, SimPanelState::kUserSlots);
    if (!id) {
        c.refuse();
        return;
    }
    c.state.antiPassback.remove(*id * 10 + 1);
    c.state.antiPassback.remove(*id * 10 + 2);
    c.confirm();
}
} // namespace

bool SimCounterCommands::handle(SimCommandContext& c)
{
    if (c.code == "MA") {
        c.state.insideCounts.clear();
        c.confirm();
    } else if (c.code == "MS" || c.code == "MR") {
        const auto group = field(c, 0, 4, 0, 9999);
        if (!group)
            c.refuse();
        else if (c.code == "MR")
            c.answer(SimText::number(c.state.insideCounts.value(*group), 4));
        else {
            c.state.insideCounts.remove(*group);
            c.confirm();
        }
    } else if (c.code == "GR" || c.code == "GW") {
        zoneCounter(c);
    } else if (c.code == "AS") {
        c.state.alarm = false;
        c.state.fire = false;
        c.statusChanged = true;
        c.confirm();
    } else if (c.code == "SA") {
        clearUserAntiPassback(c);
    } else if (c.code == "PA") {
        c.state.antiPassback.clear();
        c.confirm();
    } else if (c.code == "ES") {
        c.state.accessCounts.clear();
        c.state.canteenCounts.clear();
        c.confirm();
    } else if (c.code == "EP") {
        const auto id = field(c, 0, 5, 1, SimPanelState::kUserSlots);
        if (id) {
            c.state.accessCounts.remove(*id);
            c.state.canteenCounts.remove(*id);
        }
        id ? c.confirm() : c.refuse();
    } else if (c.code == "RP") {
        readAccessCounter(c);
    } else if (c.code == "PS" || c.code == "PR" || c.code == "LW" || c.code == "LR") {
        reader(c);
    } else {
        return false;
    }
    return true;
}
