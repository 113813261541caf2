#include "protocol/AnswerReading.h"

namespace AnswerReading {

qsizetype findAnswer(QByteArrayView text, QByteArrayView code)
{
    // Built by appending: a char added to a QByteArray without the string builder in sight would
    // be pointer arithmetic on its implicit const char*.
    QByteArray needle(1, '$');
    needle.append(code);
    return text.indexOf(needle);
}

qsizetype findFirstDollarWithCode(QByteArrayView text, QByteArrayView code)
{
    const qsizetype dollar = text.indexOf('$');
    if (dollar < 0)
        return -1;
    return text.sliced(dollar + 1).startsWith(code) ? dollar : -1;
}

QByteArray fieldAt(QByteArrayView text, qsizetype index, int offset, int length)
{
    const qsizetype start = index + offset;
    if (index < 0 || start >= text.size() || length <= 0)
        return {};
    return text.sliced(start, qMin<qsizetype>(length, text.size() - start)).toByteArray();
}

std::optional<qint64> digitsValue(QByteArrayView text)
{
    if (text.isEmpty() || text.size() > 18)
        return std::nullopt;
    qint64 value = 0;
    for (const char ch : text) {
        if (ch < '0' || ch > '9')
            return std::nullopt;
        value = value * 10 + (ch - '0');
    }
    return value;
}

std::optional<quint32> hexValue(QByteArrayView text)
{
    if (text.isEmpty() || text.size() > 8)
        return std::nullopt;
    quint32 value = 0;
    for (const char ch : text) {
        int digit = -1;
        if (ch >= '0' && ch <= '9')
            digit = ch - '0';
        else if (ch >= 'A' && ch <= 'F')
            digit = ch - 'A' + 10;
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + static_cast<quint32>(digit);
    }
    return value;
}

CommandOutcome acceptedByO(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findAnswer(result.text, code);
    if (at < 0)
        return CommandOutcome::OtherCode;
    return fieldAt(result.text, at, FieldOffset, 1) == "O" ? CommandOutcome::Accepted : CommandOutcome::Refused;
}

CommandOutcome echoedCode(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    return findFirstDollarWithCode(result.text, code) >= 0 ? CommandOutcome::Accepted : CommandOutcome::OtherCode;
}

CommandOutcome codeAnywhere(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    return result.text.contains(code) ? CommandOutcome::Accepted : CommandOutcome::OtherCode;
}

CommandOutcome anyAnswer(const ExchangeResult& result)
{
    return result.answered ? CommandOutcome::Accepted : CommandOutcome::NoAnswer;
}

CommandResult<QByteArray> textField(const ExchangeResult& result, QByteArrayView code, int length)
{
    if (!result.answered)
        return CommandOutcome::NoAnswer;
    const qsizetype at = findFirstDollarWithCode(result.text, code);
    if (at < 0)
        return CommandOutcome::OtherCode;
    return CommandResult<QByteArray>::accepted(fieldAt(result.text, at, FieldOffset, length));
}

} // namespace AnswerReading
