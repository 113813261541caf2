#pragma once

#include <QString>

class QWidget;

// The station's shipped translation table, in force while this lives: windows opened meanwhile
// can be switched to English and Arabic. On leaving, Turkish and an empty table come back so
// the next test starts as the station does.
class ShippedLanguage
{
public:
    ShippedLanguage();
    ~ShippedLanguage();
    ShippedLanguage(const ShippedLanguage&) = delete;
    ShippedLanguage& operator=(const ShippedLanguage&) = delete;

    // False (with the reason) when the table could not be read.
    bool isReady() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }

    // Saves a picture of the widget as NAME.png under KX_SCREENSHOT_DIR, when that is set, for a
    // person to look at each language.
    static void screenshot(QWidget* widget, const QString& name);

private:
    QString m_error;
};
