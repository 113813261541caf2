#pragma once

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

// "$"+code found and its status character "O": 1; answered otherwise: -1; no answer: 0.
qint16 acceptedByO(const ExchangeResult& result, QByteArrayView code);
// As acceptedByO, but no answer gives -1 too.
qint16 acceptedByOOrFail(const ExchangeResult& result, QByteArrayView code);
// First "$" followed by code: 1; by something else: 0; no answer: -1.
qint16 echoedCode(const ExchangeResult& result, QByteArrayView code);
// code anywhere in the text: 1; not found: -1; no answer: 0.
qint16 codeAnywhere(const ExchangeResult& result, QByteArrayView code);
// Any answer in time: 1; none: 0 (a refusal is not told apart).
qint16 anyAnswer(const ExchangeResult& result);
// The answer field of the first "$" followed by code, length characters, or "ERROR"; no answer
// gives "ERROR" as well.
QString textField(const ExchangeResult& result, QByteArrayView code, int length);

} // namespace AnswerReading
