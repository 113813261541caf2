#include "ShippedLanguage.h"

#include "store/LanguageDatabase.h"
#include "store/Translate.h"
#include "store/Translator.h"
#include "ui/main/LanguageSwitch.h"

#include <QCoreApplication>
#include <QDir>
#include <QWidget>

using namespace Qt::StringLiterals;

ShippedLanguage::ShippedLanguage()
{
    QList<LanguageDatabase::Row> table;
    if (!LanguageDatabase::readTable(LanguageDatabase::shippedTablePath(), &table, &m_error)) {
        if (m_error.isEmpty())
            m_error = u"the shipped translation table could not be read"_s;
        return;
    }
    Translator translator;
    for (const LanguageDatabase::Row& row : std::as_const(table))
        translator.addRow(row.turkish, row.english, row.arabic);
    SetCurrentTranslator(translator);
}

ShippedLanguage::~ShippedLanguage()
{
    LanguageSwitch::apply(0);
    SetCurrentTranslator(Translator());
}

void ShippedLanguage::screenshot(QWidget* widget, const QString& name)
{
    const QString folder = qEnvironmentVariable("KX_SCREENSHOT_DIR");
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    // Layouts follow a change of language on their next turn.
    QCoreApplication::sendPostedEvents();
    widget->grab().save(QDir(folder).filePath(name + u".png"_s));
}
