#include "protocol/AnswerReading.h"

#include <QString>

namespace AnswerReading {

qsizetype findAnswer(QByteArrayView text, QByteArrayView code)
{
    const QByteArray needle = '$' + code.toByteArray();
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

qint16 acceptedByO(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return 0;
    const qsizetype at = findAnswer(result.text, code);
    return fieldAt(result.text, at, FieldOffset, 1) == "O" ? 1 : -1;
}

qint16 acceptedByOOrFail(const ExchangeResult& result, QByteArrayView code)
{
    return acceptedByO(result, code) == 1 ? 1 : -1;
}

qint16 echoedCode(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return -1;
    return findFirstDollarWithCode(result.text, code) >= 0 ? 1 : 0;
}

qint16 codeAnywhere(const ExchangeResult& result, QByteArrayView code)
{
    if (!result.answered)
        return 0;
    return result.text.contains(code) ? 1 : -1;
}

qint16 anyAnswer(const ExchangeResult& result)
{
    return result.answered ? 1 : 0;
}

QString textField(const ExchangeResult& result, QByteArrayView code, int length)
{
    static const QString error = QStringLiteral("ERROR");
    if (!result.answered)
        return error;
    const qsizetype at = findFirstDollarWithCode(result.text, code);
    if (at < 0)
        return error;
    return QString::fromLatin1(fieldAt(result.text, at, FieldOffset, length));
}

} // namespace AnswerReading
