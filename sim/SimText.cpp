#include "SimText.h"

QByteArray SimText::number(qint64 value, int width)
{
    QByteArray text = QByteArray::number(value < 0 ? 0 : value);
    if (text.size() > width)
        return text.left(width);
    return QByteArray(width - text.size(), '0') + text;
}

QByteArray SimText::hex2(int value)
{
    return QByteArray::number(value & 0xFF, 16).toUpper().rightJustified(2, '0');
}

namespace {
// Decimal digits at pos, at most maxWidth of them so the value fits its type.
template <typename T> std::optional<T> decimal(const QByteArray& text, qsizetype pos, int width, int maxWidth)
{
    if (pos < 0 || width <= 0 || width > maxWidth || pos + width > text.size())
        return std::nullopt;
    T value = 0;
    for (qsizetype i = pos; i < pos + width; ++i) {
        const char c = text.at(i);
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}
} // namespace

std::optional<int> SimText::digits(const QByteArray& text, qsizetype pos, int width)
{
    return decimal<int>(text, pos, width, 9);
}

std::optional<qint64> SimText::longDigits(const QByteArray& text, qsizetype pos, int width)
{
    return decimal<qint64>(text, pos, width, 18);
}

std::optional<int> SimText::hex(const QByteArray& text, qsizetype pos, int width)
{
    if (pos < 0 || width <= 0 || width > 7 || pos + width > text.size())
        return std::nullopt;
    int value = 0;
    for (qsizetype i = pos; i < pos + width; ++i) {
        const char c = text.at(i);
        int digit = -1;
        if (c >= '0' && c <= '9')
            digit = c - '0';
        else if (c >= 'A' && c <= 'F')
            digit = c - 'A' + 10;
        else if (c >= 'a' && c <= 'f')
            digit = c - 'a' + 10;
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + digit;
    }
    return value;
}

std::optional<bool> SimText::flag(const QByteArray& text, qsizetype pos)
{
    if (pos < 0 || pos >= text.size())
        return std::nullopt;
    const char c = text.at(pos);
    if (c == '0')
        return false;
    if (c == '1')
        return true;
    return std::nullopt;
}
