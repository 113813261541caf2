#pragma once

#include "protocol/CommandResult.h"
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

QByteArray BuildNewCardFrame(const PanelAddress& panel, const UserRecord& user, const QDateTime& now);
QByteArray BuildReadCardFrame(const PanelAddress& panel, qint32 userId);
QByteArray BuildDeleteCardFrame(const PanelAddress& panel, qint32 userId);
QByteArray BuildEraseAllCardsFrame(const PanelAddress& panel);
QByteArray BuildReadRecordCountFrame(const PanelAddress& panel);
QByteArray BuildUserCountFrame(const PanelAddress& panel, qint32 count);
QByteArray BuildReadClockFrame(const PanelAddress& panel);
QByteArray BuildSetClockFrame(const PanelAddress& panel, const QDateTime& now);

// The user read back: Accepted with the record; Refused when the panel answers for the user with
// a card field that does not read above 0 (it holds no card there: nothing to store); OtherCode
// for anything else that came: another code or panel, another user, the dashes the panel puts in
// a slot it cannot report, or a block that does not read as a user.
CommandResult<UserRecord> InterpretReadCard(const ExchangeResult& result, const PanelAddress& panel, qint32 userId);
// The panel's record count minus one (the panel counts one more than it holds); Refused when the
// count field is not five digits above 0.
CommandResult<qint32> InterpretRecordCount(const ExchangeResult& result, const PanelAddress& panel);
// Refused when the clock digits do not read.
CommandResult<PanelClock> InterpretPanelClock(const ExchangeResult& result, const PanelAddress& panel);

// Writes or replaces one user ("O" convention); no answer only after three sends.
CommandResult<> SendNewCard(PanelLink& link, const PanelAddress& panel, const UserRecord& user, const QDateTime& now);
CommandResult<UserRecord> ReadCard(PanelLink& link, const PanelAddress& panel, qint32 userId);
// Any timely answer is accepted (a refusal is not reported).
CommandResult<> DeleteCard(PanelLink& link, const PanelAddress& panel, qint32 userId);
// Accepted when "EC" comes back anywhere in the answer (waits up to 50 s).
CommandResult<> EraseAllCards(PanelLink& link, const PanelAddress& panel);
CommandResult<qint32> ReadRecordCount(PanelLink& link, const PanelAddress& panel);
CommandResult<> SendUserCount(PanelLink& link, const PanelAddress& panel, qint32 count);
CommandResult<PanelClock> ReadPanelClock(PanelLink& link, const PanelAddress& panel);
// Accepted when the code is echoed, whatever the status.
CommandResult<> SetPanelClock(PanelLink& link, const PanelAddress& panel, const QDateTime& now);
