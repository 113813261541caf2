#pragma once

#include "protocol/AccessGroupRecord.h"
#include "protocol/CommandResult.h"
#include "protocol/PanelAddress.h"
#include "protocol/TimeGroupRecord.h"

#include <QByteArray>

class PanelLink;

// "%TN": one access group. Counters and zones out of their ranges travel as "000", "0000", "01".
QByteArray BuildGroupFrame(const PanelAddress& panel, const AccessGroupRecord& group);
QByteArray BuildEraseGroupsFrame(const PanelAddress& panel);
QByteArray BuildEraseTimeGroupsFrame(const PanelAddress& panel);
// The 121 characters of a time group after the head: number, type, basic area, extended area.
QByteArray BuildTimeGroupFields(const TimeGroupRecord& timeGroup);
QByteArray BuildTimeGroupFrame(const PanelAddress& panel, const TimeGroupRecord& timeGroup);

// "O" convention.
CommandResult<> SendGroup(PanelLink& link, const PanelAddress& panel, const AccessGroupRecord& group);
// Accepted when the answer holds "TE" anywhere (waits up to 12 s).
CommandResult<> EraseGroups(PanelLink& link, const PanelAddress& panel);
// Accepted when the answer holds "EG" anywhere (waits up to 5 s).
CommandResult<> EraseTimeGroups(PanelLink& link, const PanelAddress& panel);
// "O" convention.
CommandResult<> SendTimeGroup(PanelLink& link, const PanelAddress& panel, const TimeGroupRecord& timeGroup);
