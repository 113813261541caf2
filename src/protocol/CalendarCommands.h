#pragma once

#include "protocol/CommandResult.h"
#include "protocol/ExchangeResult.h"
#include "protocol/GroupCalendarRecord.h"
#include "protocol/PanelAddress.h"
#include "protocol/ProgrammedSlot.h"

#include <QByteArray>
#include <QString>

class PanelLink;

// Daily approval, group calendars and programmed door slots.

QByteArray BuildDailyApprovalFrame(const PanelAddress& panel, qint32 userId, bool approved);
// Type "0" only for the trimmed text "İki Saat Arası"; the times travel before the dates.
QByteArray BuildGroupCalendarFrame(const PanelAddress& panel, const GroupCalendarRecord& calendar);
// The 28 slot characters shared by "%ZW" and the "$ZR" answer.
QByteArray BuildSlotFields(const ProgrammedSlot& slot);
QByteArray BuildProgrammedSlotFrame(const PanelAddress& panel, const ProgrammedSlot& slot);
QByteArray BuildReadSlotFrame(const PanelAddress& panel, qint32 weekday, qint32 slot);

// The answer from this panel's "$ZR" on; Refused when its status is not "O", OtherCode without
// this panel's "$ZR".
CommandResult<QByteArray> InterpretReadSlot(const ExchangeResult& result, const PanelAddress& panel);
// Takes active, times, doors 1-4 and relays 1-4 of a "$ZR" answer into slot (weekday, slot number
// and doors/relays 5-8 are left as they are); false when the answer cannot be read.
bool ParseReadSlotAnswer(QByteArrayView answer, ProgrammedSlot& slot);

// "O" convention.
CommandResult<> SendDailyApproval(PanelLink& link, const PanelAddress& panel, qint32 userId, bool approved);
CommandResult<> SendGroupCalendar(PanelLink& link, const PanelAddress& panel, const GroupCalendarRecord& calendar);
CommandResult<> SendProgrammedSlot(PanelLink& link, const PanelAddress& panel, const ProgrammedSlot& slot);
CommandResult<QByteArray> ReadProgrammedSlot(PanelLink& link, const PanelAddress& panel, qint32 weekday, qint32 slot);
