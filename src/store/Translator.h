#pragma once

#include <QHash>
#include <QString>

// Serves the station's interface texts in the chosen language. Turkish is the key; English and
// Arabic rows come from the language database and are held in memory after loading.
class Translator
{
public:
    enum Language
    {
        Turkish = 0,
        English = 1,
        Arabic = 2
    };

    Translator() = default;

    int language() const { return m_language; }
    void setLanguage(int index) { m_language = index; }

    // Adds one row of the language table (Turkish, English, Arabic).
    void addRow(const QString& turkish, const QString& english, const QString& arabic);
    void clear();
    int rowCount() const { return static_cast<int>(m_rows.size()); }

    // The displayed form of a Turkish text; the text itself when no row is found.
    QString translate(const QString& turkish) const;
    // The Turkish text of a displayed text (used where the Turkish word is needed as data).
    QString toTurkish(const QString& displayed) const;

private:
    struct Row
    {
        QString english;
        QString arabic;
    };
    int m_language = Turkish;
    QHash<QString, Row> m_rows;
    QHash<QString, QString> m_fromEnglish;
    QHash<QString, QString> m_fromArabic;
};
