#include "store/SearchText.h"

namespace SearchText {

QString fold(const QString& text)
{
    QString folded;
    folded.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'I':
        case u'ı':
        case u'İ':
            folded.append(u'i');
            break;
        default:
            folded.append(c.toLower());
        }
    }
    // A capital İ written as I followed by a combining dot above folds to i and that dot.
    folded.remove(QChar(0x0307));
    return folded;
}

bool contains(const QString& haystack, const QString& needle)
{
    return fold(haystack).contains(fold(needle));
}

bool startsWith(const QString& text, const QString& start)
{
    return fold(text).startsWith(fold(start));
}

bool equals(const QString& a, const QString& b)
{
    return fold(a) == fold(b);
}

} // namespace SearchText
