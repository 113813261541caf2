#include "CliArguments.h"

using namespace Qt::Literals::StringLiterals;

bool CliArguments::parse(const QStringList& arguments, const QList<Option>& declared, QString* error)
{
    m_words.clear();
    m_values.clear();
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments.at(i);
        if (!arg.startsWith(u"--"_s)) {
            m_words.append(arg);
            continue;
        }
        QString name = arg;
        std::optional<QString> inlineValue;
        if (const qsizetype eq = arg.indexOf(u'='); eq > 0) {
            name = arg.left(eq);
            inlineValue = arg.mid(eq + 1);
        }
        const Option* option = nullptr;
        for (const Option& o : declared) {
            if (o.name == name)
                option = &o;
        }
        if (!option) {
            *error = u"unknown option "_s + name;
            return false;
        }
        if (option->valueName.isEmpty()) {
            if (inlineValue) {
                *error = name + u" takes no value"_s;
                return false;
            }
            m_values.insert(name, QString());
            continue;
        }
        if (inlineValue) {
            m_values.insert(name, *inlineValue);
        } else if (i + 1 < arguments.size()) {
            m_values.insert(name, arguments.at(++i));
        } else {
            *error = name + u" needs a value ("_s + option->valueName + u')';
            return false;
        }
    }
    return true;
}

std::optional<int> CliArguments::number(const QString& name, int low, int high, QString* error) const
{
    if (!has(name)) {
        *error = name + u" is required"_s;
        return std::nullopt;
    }
    const auto n = toNumber(value(name), low, high);
    if (!n) {
        *error = name + u" takes a whole number from "_s + QString::number(low) + u" to " + QString::number(high)
            + u", not " + value(name);
        return std::nullopt;
    }
    return static_cast<int>(*n);
}

std::optional<qint64> CliArguments::toNumber(const QString& text, qint64 low, qint64 high)
{
    bool ok = false;
    const qint64 n = text.trimmed().toLongLong(&ok);
    if (!ok || n < low || n > high)
        return std::nullopt;
    return n;
}

std::optional<std::array<bool, 4>> CliArguments::fourPlaces(const QString& text)
{
    std::array<bool, 4> places{};
    if (text.trimmed() == u"all"_s)
        return std::array<bool, 4>{ true, true, true, true };
    const QStringList parts = text.split(u',', Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return std::nullopt;
    for (const QString& part : parts) {
        const auto n = toNumber(part, 1, 4);
        if (!n)
            return std::nullopt;
        places[static_cast<size_t>(*n - 1)] = true;
    }
    return places;
}

QString CliArguments::describe(const QList<Option>& options, int indent)
{
    QString text;
    for (const Option& o : options) {
        QString head = QString(indent, u' ') + o.name;
        if (!o.valueName.isEmpty())
            head += u' ' + o.valueName;
        text += head.leftJustified(indent + 22) + u' ' + o.help + u'\n';
    }
    return text;
}
