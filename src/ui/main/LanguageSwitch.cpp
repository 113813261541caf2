#include "ui/main/LanguageSwitch.h"

#include "store/Translate.h"
#include "store/Translator.h"
#include "ui/common/Caption.h"

#include <QApplication>

void LanguageSwitch::apply(int language)
{
    SetCurrentLanguage(language);
    QApplication::setLayoutDirection(language == Translator::Arabic ? Qt::RightToLeft : Qt::LeftToRight);
    Caption::applyAll();
}
