#pragma once

#include <QByteArray>
#include <QString>

// The only ways numbers and texts are put into panel frames. Each keeps its historical quirks on
// purpose: panels in the field were built against exactly these outputs.

// Decimal in three digits for 0..255; any other value is its plain decimal text, unpadded.
QByteArray FormatDec3(qint16 value);
// Two upper-case hex digits; anything that does not fit (negative, above 255) gives "00".
QByteArray FormatHex2(qint16 value);
// Four upper-case hex digits; anything that does not fit (negative, above 0xFFFF) gives "0000".
QByteArray FormatHex4(qint32 value);
// Blank-padded on the right to width, or cut to its first width characters.
QByteArray PadText(const QByteArray& text, qint16 width);

// A frame field from a possibly out-of-range value: negatives travel as 0, then "0"-padded on the
// left to width; a longer text keeps its leftmost width digits.
QByteArray PadDigits(qint64 value, int width);
// "1" for true, "0" for false.
QByteArray FlagDigit(bool value);
// A text made safe for a frame: Turkish letters folded to ASCII; other non-printable characters
// and the frame markers '$', '%', '*' become '_'.
QByteArray FrameSafeText(const QString& text);
