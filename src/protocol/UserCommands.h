#pragma once

#include "protocol/ExchangeResult.h"
#include "protocol/PanelAddress.h"
#include "protocol/PanelClock.h"
#include "protocol/UserRecord.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

class PanelLink;

// The user block: 44 characters describing one card holder. now fills an empty temporary-group
// time or date.
QByteArray BuildUserBlock(const UserRecord& user, const QDateTime& now);
// Reads a user block (44 characters) back into a record; false when a field is not numeric or
// the card number does not fit the card field.
bool ParseUserBlock(QByteArrayView block, UserRecord& user);
// Reads the user block out of a "$UC" answer (as returned by ReadCard).
bool ParseReadCardAnswer(const QString& answer, UserRecord& user);

QByteArray BuildNewCardFrame(const PanelAddress& panel, const UserRecord& user, const QDateTime& now);
QByteArray BuildReadCardFrame(const PanelAddress& panel, qint32 userId);
QByteArray BuildDeleteCardFrame(const PanelAddress& panel, qint32 userId);
QByteArray BuildEraseAllCardsFrame(const PanelAddress& panel);
QByteArray BuildReadRecordCountFrame(const PanelAddress& panel);
QByteArray BuildUserCountFrame(const PanelAddress& panel, qint32 count);
QByteArray BuildReadClockFrame(const PanelAddress& panel);
QByteArray BuildSetClockFrame(const PanelAddress& panel, const QDateTime& now);

// The whole answer, or "TIMEOUT" (no answer), "ERROR" (other user, empty slot, no "$UC"),
// "INVALID" (the card stretch does not read above 0).
QString InterpretReadCard(const ExchangeResult& result, const PanelAddress& panel, qint32 userId);
// The panel's record count minus one (the panel counts one more than it holds), or -1.
qint32 InterpretRecordCount(const ExchangeResult& result, const PanelAddress& panel);
PanelClock InterpretPanelClock(const ExchangeResult& result, const PanelAddress& panel);

// Writes or replaces one user: 1 accepted, -1 refused, 0 no answer after three sends.
qint16 SendNewCard(PanelLink& link, const PanelAddress& panel, const UserRecord& user, const QDateTime& now);
QString ReadCard(PanelLink& link, const PanelAddress& panel, qint32 userId);
// 1 for any timely answer (a refusal is not reported), 0 for none.
qint16 DeleteCard(PanelLink& link, const PanelAddress& panel, qint32 userId);
// 1 when "EC" comes back, -1 otherwise, 0 no answer (waits up to 50 s).
qint16 EraseAllCards(PanelLink& link, const PanelAddress& panel);
qint32 ReadRecordCount(PanelLink& link, const PanelAddress& panel);
qint16 SendUserCount(PanelLink& link, const PanelAddress& panel, qint32 count);
PanelClock ReadPanelClock(PanelLink& link, const PanelAddress& panel);
// 1 when the code is echoed, 0 another code, -1 no answer.
qint32 SetPanelClock(PanelLink& link, const PanelAddress& panel, const QDateTime& now);
