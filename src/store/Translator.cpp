#include "store/Translator.h"

void Translator::addRow(const QString& turkish, const QString& english, const QString& arabic)
{
    const QString key = turkish.trimmed();
    if (m_rows.contains(key))
        return; // the first row for a text wins, as a lookup would find it first
    m_rows.insert(key, { english, arabic });
    // The first row with a displayed text wins the reverse lookup too; empty cells name nothing.
    if (!english.trimmed().isEmpty() && !m_fromEnglish.contains(english.trimmed()))
        m_fromEnglish.insert(english.trimmed(), key);
    if (!arabic.trimmed().isEmpty() && !m_fromArabic.contains(arabic.trimmed()))
        m_fromArabic.insert(arabic.trimmed(), key);
}

void Translator::clear()
{
    m_rows.clear();
    m_fromEnglish.clear();
    m_fromArabic.clear();
}

QString Translator::translate(const QString& turkish) const
{
    // Language 0 never looks anything up; 3 and 4 are accepted but name no column.
    if (m_language < 1 || m_language > 4)
        return turkish;
    const auto it = m_rows.constFind(turkish.trimmed());
    if (it == m_rows.constEnd())
        return turkish;
    // A row without a text for the language (an empty or NULL cell) shows the Turkish text.
    const QString& found = m_language == English ? it->english : m_language == Arabic ? it->arabic : turkish;
    return found.isEmpty() ? turkish : found;
}

QString Translator::toTurkish(const QString& displayed) const
{
    if (m_language < 1 || m_language > 4)
        return displayed;
    const QHash<QString, QString>* index = nullptr;
    if (m_language == English)
        index = &m_fromEnglish;
    else if (m_language == Arabic)
        index = &m_fromArabic;
    if (!index)
        return displayed;
    const auto it = index->constFind(displayed.trimmed());
    return it == index->constEnd() ? displayed : *it;
}
