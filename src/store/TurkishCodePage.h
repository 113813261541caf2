#pragma once

#include <QByteArray>
#include <QString>

// The 8-bit Turkish Windows code page (1254). Every byte value maps to exactly one character
// (the seven values the code page leaves undefined map to the control characters of the same
// number), so decoding and encoding again gives back the same bytes.
class TurkishCodePage
{
public:
    static QString decode(const QByteArray& bytes);
    // Characters outside the code page become '?'; *lossless is cleared when that happens.
    static QByteArray encode(const QString& text, bool* lossless = nullptr);
    static QChar toUnicode(unsigned char byte);
};
