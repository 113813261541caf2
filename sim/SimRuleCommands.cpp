#include "SimRuleCommands.h"

#include "SimCommandContext.h"
#include "SimPanelState.h"
#include "SimText.h"

namespace {
void writeGroup(SimCommandContext& c)
{
    const auto group = SimGroup::fromFields(c.fields);
    if (!group || group->number < 1 || group->number > SimPanelState::kGroups) {
        c.refuse();
        return;
    }
    c.state.groups.insert(group->number, *group);
    c.confirm();
}

void writeTimeGroup(SimCommandContext& c)
{
    const auto group = SimTimeGroup::fromFields(c.fields);
    if (!group) {
        c.refuse();
        return;
    }
    c.state.timeGroups.insert(group->number, *group);
    c.confirm();
}

void writeCalendar(SimCommandContext& c)
{
    const auto calendar = SimCalendar::fromFields(c.fields);
    if (!calendar) {
        c.refuse();
        return;
    }
    c.state.calendars.insert(calendar->number, *calendar);
    c.confirm();
}

void writeSlot(SimCommandContext& c)
{
    const auto slot = SimProgrammedSlot::fromFields(c.fields);
    if (!slot) {
        c.refuse();
        return;
    }
    c.state.programmedSlots.insert(slot->weekday * 100 + slot->slot, *slot);
    c.confirm();
}

void readSlot(SimCommandContext& c)
{
    const auto weekday = SimText::digits(c.fields, 0, 1);
    const auto slot = SimText::digits(c.fields, 1, 2);
    if (!weekday || !slot || *weekday < 1 || *weekday > 7 || *slot < 1 || *slot > SimProgrammedSlot::kSlotsPerDay) {
        c.refuse();
        return;
    }
    // Every weekday has its 16 slots from the start: one never written reads as inactive, 00:00-00:00.
    SimProgrammedSlot empty;
    empty.weekday = *weekday;
    empty.slot = *slot;
    c.answer('O' + c.state.programmedSlots.value(*weekday * 100 + *slot, empty).toFields());
}

void writeSettings(SimCommandContext& c)
{
    auto settings = SimPanelSettings::fromRecord(c.fields);
    if (!settings) {
        c.refuse();
        return;
    }
    c.state.applySettings(*settings);
    c.settingsChanged = true;
    c.confirm();
}
} // namespace

bool SimRuleCommands::handle(SimCommandContext& c)
{
    if (c.code == "TN") {
        writeGroup(c);
    } else if (c.code == "TE") {
        c.state.groups.clear();
        c.confirm();
    } else if (c.code == "NG") {
        writeTimeGroup(c);
    } else if (c.code == "EG") {
        c.state.timeGroups.clear();
        c.confirm();
    } else if (c.code == "CZ") {
        writeCalendar(c);
    } else if (c.code == "ZW") {
        writeSlot(c);
    } else if (c.code == "ZR") {
        readSlot(c);
    } else if (c.code == "DS") {
        writeSettings(c);
    } else {
        return false;
    }
    return true;
}
