#include "store/Message.h"

#include "store/Translator.h"

Message::Message(const QString& turkishText)
{
    add(turkishText);
}

Message Message::text(const QString& turkishText)
{
    return Message(turkishText);
}

Message& Message::add(const QString& turkishText)
{
    m_fragments.append({ turkishText, true });
    return *this;
}

Message& Message::value(const QString& literal)
{
    m_fragments.append({ literal, false });
    return *this;
}

Message& Message::value(qint64 number)
{
    return value(QString::number(number));
}

Message& Message::newLine()
{
    return value(QStringLiteral("\n"));
}

Message& Message::append(const Message& other)
{
    m_fragments.append(other.m_fragments);
    return *this;
}

QString Message::turkish() const
{
    QString out;
    for (const Fragment& f : m_fragments)
        out += f.text;
    return out;
}

QString Message::render(const Translator& translator) const
{
    QString out;
    for (const Fragment& f : m_fragments) {
        if (!f.translatable) {
            out += f.text;
            continue;
        }
        // Keep the blanks that join a fragment to its neighbours; only the core is looked up.
        qsizetype start = 0;
        while (start < f.text.size() && f.text.at(start).isSpace())
            ++start;
        qsizetype end = f.text.size();
        while (end > start && f.text.at(end - 1).isSpace())
            --end;
        out += f.text.left(start) + translator.translate(f.text.mid(start, end - start)) + f.text.mid(end);
    }
    return out;
}
