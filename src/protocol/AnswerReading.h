#pragma once

#include "protocol/CommandResult.h"
#include "protocol/ExchangeResult.h"

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

// Reading panel answers: locating "$"+code in the received text and applying the result
// conventions. Pure functions of text; any bytes are accepted and never read out of range.
namespace AnswerReading {

// Distance from the "$" to the first character of the answer field.
inline constexpr int FieldOffset = 10;

// Index of the first "$" immediately followed by code, or -1.
qsizetype findAnswer(QByteArrayView text, QByteArrayView code);
// Index of the first "$" whose next two characters equal code, or -1 when the first "$" is
// followed by anything else (or there is no "$").
qsizetype findFirstDollarWithCode(QByteArrayView text, QByteArrayView code);
// The length characters that start offset places after index (fewer when the text ends first).
QByteArray fieldAt(QByteArrayView text, qsizetype index, int offset, int length);
// The digits of text as a number; nothing when text is empty or holds anything but digits.
std::optional<qint64> digitsValue(QByteArrayView text);
// The upper-case hex digits of text as a number; nothing when text is empty or holds anything else.
std::optional<quint32> hexValue(QByteArrayView text);

// "$"+code found with the status character "O": Accepted; found with another: Refused; not
// found: OtherCode; no answer: NoAnswer.
CommandOutcome acceptedByO(const ExchangeResult& result, QByteArrayView code);
// The first "$" followed by code: Accepted, whatever its status; followed by anything else:
// OtherCode; no answer: NoAnswer.
CommandOutcome echoedCode(const ExchangeResult& result, QByteArrayView code);
// code anywhere in the text: Accepted; not found: OtherCode; no answer: NoAnswer.
CommandOutcome codeAnywhere(const ExchangeResult& result, QByteArrayView code);
// Any answer in time: Accepted (a refusal is not told apart); none: NoAnswer.
CommandOutcome anyAnswer(const ExchangeResult& result);
// The answer field of the first "$" followed by code, up to length characters; OtherCode when the
// first "$" is followed by anything else, NoAnswer without an answer.
CommandResult<QByteArray> textField(const ExchangeResult& result, QByteArrayView code, int length);

} // namespace AnswerReading
