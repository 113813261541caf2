#pragma once

#include <QString>

// How searches compare what a person typed with stored names: letter case is ignored by Turkish
// rules ("YILMAZ" finds "Yılmaz", "şahin" finds "ŞAHİN"), and the dotted and dotless i count as
// one letter, so a name typed on a keyboard without Turkish letters is found too. Every character
// stands for itself (no wildcards).
namespace SearchText {

// The form both sides are brought to before comparing.
QString fold(const QString& text);

bool contains(const QString& haystack, const QString& needle);
bool startsWith(const QString& text, const QString& start);
bool equals(const QString& a, const QString& b);

} // namespace SearchText
