#pragma once

#include "protocol/CommandResult.h"
#include "protocol/DoorCommandText.h"
#include "protocol/PanelAddress.h"

#include <QByteArray>
#include <QString>

class PanelLink;

// Record memory, inside and zone counters, alarm, anti-passback and door commands.

QByteArray BuildEraseRecordMemoryFrame(const PanelAddress& panel);
QByteArray BuildClearAllInsideCountsFrame(const PanelAddress& panel);
QByteArray BuildClearGroupInsideCountFrame(const PanelAddress& panel, qint32 groupNo);
QByteArray BuildReadGroupInsideCountFrame(const PanelAddress& panel, qint32 groupNo);
QByteArray BuildReadZoneCounterFrame(const PanelAddress& panel, qint32 zone);
QByteArray BuildWriteZoneCounterFrame(const PanelAddress& panel, qint32 zone, qint32 count);
QByteArray BuildClearAlarmFrame(const PanelAddress& panel);
QByteArray BuildResetUserAntiPassbackFrame(const PanelAddress& panel, qint32 userId);
QByteArray BuildResetAllAntiPassbackFrame(const PanelAddress& panel);
// The 30 characters of a door command: doors, master relays, the two flags, user (4 hex), card (16).
QByteArray BuildDoorText(const DoorCommandText& command);
// action 0 "DT" (trigger), 1 "FO" (hold open), 2 "FC" (hold closed); any other action gives an
// empty frame, which is never sent.
QByteArray BuildDoorCommandFrame(const PanelAddress& panel, qint32 action, const QByteArray& doorText);

// Echo convention: accepted when this panel's code is echoed, whatever the status.
CommandResult<> EraseRecordMemory(PanelLink& link, const PanelAddress& panel);
CommandResult<> ClearAllInsideCounts(PanelLink& link, const PanelAddress& panel);
CommandResult<> ClearGroupInsideCount(PanelLink& link, const PanelAddress& panel, qint32 groupNo);
// The count as the panel wrote it (up to 4 characters).
CommandResult<QByteArray> ReadGroupInsideCount(PanelLink& link, const PanelAddress& panel, qint32 groupNo);
CommandResult<QByteArray> ReadZoneCounter(PanelLink& link, const PanelAddress& panel, qint32 zone);
CommandResult<> WriteZoneCounter(PanelLink& link, const PanelAddress& panel, qint32 zone, qint32 count);
CommandResult<> ClearAlarm(PanelLink& link, const PanelAddress& panel);
CommandResult<> ResetUserAntiPassback(PanelLink& link, const PanelAddress& panel, qint32 userId);
CommandResult<> ResetAllAntiPassback(PanelLink& link, const PanelAddress& panel);
// "O" convention; an unknown action sends nothing and comes back as NoAnswer.
CommandResult<> DoorCommand(PanelLink& link, const PanelAddress& panel, qint32 action, const QByteArray& doorText);
