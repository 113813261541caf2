#pragma once

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

// The two digits after the "O" of "$"+code read as a number; -1 without an answer, without "O",
// or when they are not digits.
qint32 InterpretTwoDigitValue(const ExchangeResult& result, QByteArrayView code);

// 1 accepted; -1 refused or no answer.
qint32 SetReaderPower(PanelLink& link, const PanelAddress& panel, qint32 reader, qint32 powerDbm);
// The power in dBm, or -1.
qint32 GetReaderPower(PanelLink& link, const PanelAddress& panel, qint32 reader);
// 1 accepted; -1 refused or no answer.
qint32 SetBuzzerLed(PanelLink& link, const PanelAddress& panel, qint32 reader, qint32 buzzer, qint32 led);
// Buzzer digit * 10 + LED digit, or -1.
qint32 GetBuzzerLed(PanelLink& link, const PanelAddress& panel, qint32 reader);
// 1 code echoed, 0 another code, -1 no answer (waits up to 15 s).
qint32 EraseAllAccessCounters(PanelLink& link, const PanelAddress& panel);
qint32 EraseAccessCounter(PanelLink& link, const PanelAddress& panel, qint32 userId);
// The nine counter characters, or "ERROR".
QString ReadAccessCounter(PanelLink& link, const PanelAddress& panel, qint32 userId);
