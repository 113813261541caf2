#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

// The words and options of one command ("users send --all-panels --first 1 --last 50"): options
// are checked against what the command declares, so a misspelt option is an error rather than
// silently ignored.
class CliArguments
{
public:
    struct Option
    {
        QString name; // "--panel"
        QString valueName; // "N"; empty for a flag
        QString help;
    };

    // Splits the arguments into words and declared options ("--name value" or "--name=value").
    bool parse(const QStringList& arguments, const QList<Option>& declared, QString* error);

    const QStringList& words() const { return m_words; }
    QString word(int index) const { return m_words.value(index); }
    bool has(const QString& name) const { return m_values.contains(name); }
    QString value(const QString& name, const QString& fallback = {}) const { return m_values.value(name, fallback); }

    // A whole number in [low, high]; nullopt with a reason when the option is missing or bad.
    std::optional<int> number(const QString& name, int low, int high, QString* error) const;
    // A whole number taken from a word.
    static std::optional<qint64> toNumber(const QString& text, qint64 low, qint64 high);

    // "1,3" or "all" to four on/off places (doors or relays 1..4); nullopt for anything else.
    static std::optional<std::array<bool, 4>> fourPlaces(const QString& text);

    // The option lines of a command's help text.
    static QString describe(const QList<Option>& options, int indent = 2);

private:
    QStringList m_words;
    QHash<QString, QString> m_values;
};
