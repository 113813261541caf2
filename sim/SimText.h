#pragma once

#include <QByteArray>
#include <QStringBuilder>
#include <optional>

// Fixed-width decimal and hex fields as the panel firmware reads and writes them.
class SimText
{
public:
    // Decimal, zero-padded on the left; a longer number keeps its leftmost digits.
    static QByteArray number(qint64 value, int width);
    // Two upper-case hex digits of a byte.
    static QByteArray hex2(int value);
    // Reads `width` decimal digits at 0-based `pos`; nothing when any of them is not a digit.
    static std::optional<int> digits(const QByteArray& text, qsizetype pos, int width);
    // As digits() for fields wider than an int holds (card numbers).
    static std::optional<qint64> longDigits(const QByteArray& text, qsizetype pos, int width);
    // Reads `width` hex digits at 0-based `pos`.
    static std::optional<int> hex(const QByteArray& text, qsizetype pos, int width);
    // One "0"/"1" flag character at `pos`.
    static std::optional<bool> flag(const QByteArray& text, qsizetype pos);
};
