#pragma once

#include "protocol/AccessGroupRecord.h"
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

// 1 accepted, -1 refused, 0 no answer.
qint16 SendGroup(PanelLink& link, const PanelAddress& panel, const AccessGroupRecord& group);
// 1 when the answer holds "TE", -1 otherwise, 0 no answer (waits up to 12 s).
qint16 EraseGroups(PanelLink& link, const PanelAddress& panel);
// 1 when the answer holds "EG", -1 otherwise, 0 no answer (waits up to 5 s).
qint16 EraseTimeGroups(PanelLink& link, const PanelAddress& panel);
// 1 accepted, -1 refused, 0 no answer.
qint16 SendTimeGroup(PanelLink& link, const PanelAddress& panel, const TimeGroupRecord& timeGroup);
