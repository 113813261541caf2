#pragma once

#include "protocol/CommandResult.h"
#include "protocol/ExchangeResult.h"
#include "protocol/PanelAddress.h"

#include <QByteArray>
#include <QString>

class PanelLink;

// UHF reader settings and the per-user access counters.

// Power outside 15..30 dBm is sent as 30, the reader's maximum.
QByteArray BuildSetReaderPowerFrame(const PanelAddress& panel, qint32 reader, qint32 powerDbm);
QByteArray BuildGetReaderPowerFrame(const PanelAddress& panel, qint32 reader);
QByteArray BuildSetBuzzerLedFrame(const PanelAddress& panel, qint32 reader, qint32 buzzer, qint32 led);
QByteArray BuildGetBuzzerLedFrame(const PanelAddress& panel, qint32 reader);
QByteArray BuildEraseAllAccessCountersFrame(const PanelAddress& panel);
QByteArray BuildEraseAccessCounterFrame(const PanelAddress& panel, qint32 userId);
QByteArray BuildReadAccessCounterFrame(const PanelAddress& panel, qint32 userId);

// The two digits after the "O" of "$"+code read as a number; Refused without the "O" or when they
// are not digits, OtherCode without "$"+code.
CommandResult<qint32> InterpretTwoDigitValue(const ExchangeResult& result, QByteArrayView code);

// "O" convention.
CommandResult<> SetReaderPower(PanelLink& link, const PanelAddress& panel, qint32 reader, qint32 powerDbm);
// The power in dBm.
CommandResult<qint32> GetReaderPower(PanelLink& link, const PanelAddress& panel, qint32 reader);
// "O" convention.
CommandResult<> SetBuzzerLed(PanelLink& link, const PanelAddress& panel, qint32 reader, qint32 buzzer, qint32 led);
// Buzzer digit * 10 + LED digit.
CommandResult<qint32> GetBuzzerLed(PanelLink& link, const PanelAddress& panel, qint32 reader);
// Echo convention (waits up to 15 s).
CommandResult<> EraseAllAccessCounters(PanelLink& link, const PanelAddress& panel);
CommandResult<> EraseAccessCounter(PanelLink& link, const PanelAddress& panel, qint32 userId);
// The counter characters (up to nine).
CommandResult<QByteArray> ReadAccessCounter(PanelLink& link, const PanelAddress& panel, qint32 userId);
