#pragma once

#include <QList>
#include <QString>

class Translator;

// A text for the person, kept as fragments so that each fixed Turkish fragment is translated on
// its own and numbers or names between them pass through untouched. Operations build messages;
// only the side that shows them (window, command line) renders them in the current language.
class Message
{
public:
    struct Fragment
    {
        QString text;
        bool translatable = true;
        bool operator==(const Fragment&) const = default;
    };

    Message() = default;
    // A fixed station text (Turkish), translated when shown.
    explicit Message(const QString& turkishText);

    static Message text(const QString& turkishText);

    // Appends a fixed station text (translated when shown).
    Message& add(const QString& turkishText);
    // Appends a value shown as it is: a number, a name, a path.
    Message& value(const QString& literal);
    Message& value(qint64 number);
    // Starts a new line (kept as a literal fragment).
    Message& newLine();
    Message& append(const Message& other);

    bool isEmpty() const { return m_fragments.isEmpty(); }
    const QList<Fragment>& fragments() const { return m_fragments; }

    // The Turkish text exactly as the station writes it (what tests compare).
    QString turkish() const;
    // The text in the translator's current language; blanks around a fragment are kept.
    QString render(const Translator& translator) const;

    bool operator==(const Message&) const = default;

private:
    QList<Fragment> m_fragments;
};
