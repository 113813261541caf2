#include "store/TurkishCodePage.h"

#include <QHash>

namespace {

// Characters of the bytes 0x80..0xFF. Undefined positions hold the control character of the
// same number so that every byte survives a round trip.
constexpr char16_t HighHalf[128] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x008E, 0x008F, // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x009E, 0x0178, // 98
    0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x00A6, 0x00A7, // A0
    0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF, // A8
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00B4, 0x00B5, 0x00B6, 0x00B7, // B0
    0x00B8, 0x00B9, 0x00BA, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF, // B8
    0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7, // C0
    0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF, // C8
    0x011E, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D7, // D0
    0x00D8, 0x00D9, 0x00DA, 0x00DB, 0x00DC, 0x0130, 0x015E, 0x00DF, // D8
    0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7, // E0
    0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00ED, 0x00EE, 0x00EF, // E8
    0x011F, 0x00F1, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00F7, // F0
    0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x0131, 0x015F, 0x00FF, // F8
};

const QHash<char16_t, char>& reverseTable()
{
    static const QHash<char16_t, char> table = [] {
        QHash<char16_t, char> t;
        for (int i = 0; i < 128; ++i)
            t.insert(HighHalf[i], static_cast<char>(0x80 + i));
        return t;
    }();
    return table;
}

} // namespace

QChar TurkishCodePage::toUnicode(unsigned char byte)
{
    return byte < 0x80 ? QChar(char16_t(byte)) : QChar(HighHalf[byte - 0x80]);
}

QString TurkishCodePage::decode(const QByteArray& bytes)
{
    QString out;
    out.reserve(bytes.size());
    for (const char c : bytes)
        out.append(toUnicode(static_cast<unsigned char>(c)));
    return out;
}

QByteArray TurkishCodePage::encode(const QString& text, bool* lossless)
{
    if (lossless)
        *lossless = true;
    QByteArray out;
    out.reserve(text.size());
    const QHash<char16_t, char>& table = reverseTable();
    for (const QChar ch : text) {
        const char16_t u = ch.unicode();
        if (u < 0x80) {
            out.append(static_cast<char>(u));
            continue;
        }
        const auto it = table.constFind(u);
        if (it != table.constEnd()) {
            out.append(*it);
            continue;
        }
        out.append('?');
        if (lossless)
            *lossless = false;
    }
    return out;
}
