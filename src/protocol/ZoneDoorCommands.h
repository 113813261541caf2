#pragma once

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

// Echo results: 1 code echoed, 0 another code, -1 no answer.
qint16 EraseRecordMemory(PanelLink& link, const PanelAddress& panel);
qint16 ClearAllInsideCounts(PanelLink& link, const PanelAddress& panel);
qint16 ClearGroupInsideCount(PanelLink& link, const PanelAddress& panel, qint32 groupNo);
// The count as the panel wrote it (4 characters), or "ERROR".
QString ReadGroupInsideCount(PanelLink& link, const PanelAddress& panel, qint32 groupNo);
QString ReadZoneCounter(PanelLink& link, const PanelAddress& panel, qint32 zone);
qint16 WriteZoneCounter(PanelLink& link, const PanelAddress& panel, qint32 zone, qint32 count);
qint16 ClearAlarm(PanelLink& link, const PanelAddress& panel);
qint16 ResetUserAntiPassback(PanelLink& link, const PanelAddress& panel, qint32 userId);
qint16 ResetAllAntiPassback(PanelLink& link, const PanelAddress& panel);
// 1 accepted, -1 refused, 0 no answer or an unknown action (nothing sent then).
qint16 DoorCommand(PanelLink& link, const PanelAddress& panel, qint32 action, const QByteArray& doorText);
