#include "ui/main/LanguageSwitch.h"

#include "store/Translate.h"
#include "store/Translator.h"
#include "ui/common/Caption.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

// Qt's own texts (Yes/No buttons, the file dialog, the calendar) in the station's language, from
// the translations installed with Qt; English needs none.
void loadQtTexts(int language)
{
    static QTranslator* translator = nullptr;
    if (translator) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
        translator = nullptr;
    }
    const QLocale locale(language == Translator::Arabic        ? QLocale::Arabic
                             : language == Translator::English ? QLocale::English
                                                               : QLocale::Turkish);
    if (language == Translator::English)
        return;
    auto* loaded = new QTranslator(QCoreApplication::instance());
    if (loaded->load(locale, u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(loaded);
        translator = loaded;
    } else {
        delete loaded;
    }
}

} // namespace

void LanguageSwitch::apply(int language)
{
    SetCurrentLanguage(language);
    loadQtTexts(language);
    QApplication::setLayoutDirection(language == Translator::Arabic ? Qt::RightToLeft : Qt::LeftToRight);
    Caption::applyAll();
}
