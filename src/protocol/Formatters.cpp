#include "protocol/Formatters.h"

#include <algorithm>
#include <limits>

namespace {

QByteArray padLeftOrCut(const QByteArray& digits, int width)
{
    if (width <= 0)
        return {};
    if (digits.size() >= width)
        return digits.left(width);
    return QByteArray(width - digits.size(), '0') + digits;
}

} // namespace

QByteArray FormatDec3(qint16 value)
{
    const QByteArray text = QByteArray::number(value);
    if (value >= 0 && value <= 9)
        return "00" + text;
    if (value >= 10 && value <= 99)
        return "0" + text;
    return text;
}

QByteArray FormatHex2(qint16 value)
{
    if (value < 0 || value > 0xFF)
        return "00";
    const QByteArray hex = QByteArray::number(value, 16).toUpper();
    return hex.size() == 1 ? "0" + hex : hex;
}

QByteArray FormatHex4(qint32 value)
{
    if (value < 0 || value > 0xFFFF)
        return "0000";
    const QByteArray hex = QByteArray::number(value, 16).toUpper();
    return QByteArray(4 - hex.size(), '0') + hex;
}

QByteArray PadText(const QByteArray& text, qint16 width)
{
    if (width <= 0)
        return {};
    if (text.size() >= width)
        return text.left(width);
    return text + QByteArray(width - text.size(), ' ');
}

QByteArray PadDigits(qint64 value, int width)
{
    const qint64 clamped = std::clamp<qint64>(value, 0, std::numeric_limits<qint64>::max());
    return padLeftOrCut(QByteArray::number(clamped), width);
}

QByteArray FlagDigit(bool value)
{
    return value ? "1" : "0";
}

QByteArray FrameSafeText(const QString& text)
{
    static const QString from = QStringLiteral(u"çğıöşüÇĞİÖŞÜ");
    static const char to[] = "cgiosuCGIOSU";
    QByteArray out;
    out.reserve(text.size());
    for (const QChar ch : text) {
        const qsizetype folded = from.indexOf(ch);
        if (folded >= 0) {
            out.append(to[folded]);
            continue;
        }
        const char16_t u = ch.unicode();
        if (u < 32 || u > 126 || u == u'$' || u == u'%' || u == u'*')
            out.append('_');
        else
            out.append(static_cast<char>(u));
    }
    return out;
}
