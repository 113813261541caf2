#pragma once

#include <QList>
#include <QString>

// Finds the station texts a source file shows: the first string literal inside the parentheses
// of Translate(, ToTurkish(, tr_(, setCaption(, Message(, Message name(, Message::text( and
// .add( calls, with comments left out. Literals without a letter are not texts.
class SourceTextScanner
{
public:
    struct Use
    {
        QString text; // trimmed, escapes resolved
        QString where; // path relative to root, ":" line
    };

    static QList<Use> textsIn(const QString& path, const QString& root);
    // Every literal holding a letter only Turkish uses (ç ğ ı İ ö ş ü): such a literal is a text
    // for the person whatever call it is handed to.
    static QList<Use> turkishLiteralsIn(const QString& path, const QString& root);
    // Every string literal, raw ones (R"x(...)x") included as written.
    static QList<Use> literalsIn(const QString& path, const QString& root);
    // The source with comments blanked out (line breaks and literals kept).
    static QString withoutComments(const QString& source);

private:
    static QList<Use> literals(const QString& path, const QString& root, bool withRaw);
};
