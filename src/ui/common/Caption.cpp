#include "ui/common/Caption.h"

#include "store/Translate.h"
#include "store/Translator.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSet>
#include <QStackedWidget>
#include <QTabWidget>

namespace {
const char* const keyProperty = "kxCaption";
const char* const suffixProperty = "kxCaptionSuffix";
const char* const itemsProperty = "kxItemCaptions";
const char* const englishProperty = "kxCaptionEnglish";

// The caption of a control in the current language.
QString captionOf(const QObject* target)
{
    const QString english = target->property(englishProperty).toString();
    const QString suffix = target->property(suffixProperty).toString();
    if (!english.isEmpty() && CurrentLanguage() == Translator::English)
        return english + suffix;
    return Translate(target->property(keyProperty).toString()) + suffix;
}

QTabWidget* tabWidgetOfPage(QWidget* page)
{
    auto* stack = qobject_cast<QStackedWidget*>(page->parentWidget());
    if (!stack)
        return nullptr;
    auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget());
    if (tabs && tabs->indexOf(page) >= 0)
        return tabs;
    return nullptr;
}

void show(QObject* target, const QString& text)
{
    if (auto* action = qobject_cast<QAction*>(target)) {
        action->setText(text);
        return;
    }
    auto* widget = qobject_cast<QWidget*>(target);
    if (!widget)
        return;
    if (QTabWidget* tabs = tabWidgetOfPage(widget)) {
        tabs->setTabText(tabs->indexOf(widget), text);
    } else if (auto* menu = qobject_cast<QMenu*>(widget)) {
        menu->setTitle(text);
    } else if (widget->isWindow()) {
        widget->setWindowTitle(text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(text);
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setTitle(text);
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->setPlaceholderText(text);
    } else {
        widget->setWindowTitle(text);
    }
}

void applyItems(QComboBox* combo)
{
    const QVariantList items = combo->property(itemsProperty).toList();
    for (int i = 0; i < items.size() && i < combo->count(); ++i) {
        const QStringList pair = items.at(i).toStringList();
        if (pair.size() == 2 && !pair.at(0).isEmpty())
            combo->setItemText(i, Translate(pair.at(0)) + pair.at(1));
    }
}
} // namespace

void setCaption(QObject* target, const QString& turkish, const QString& suffix)
{
    if (!target)
        return;
    target->setProperty(keyProperty, turkish);
    target->setProperty(suffixProperty, suffix);
    show(target, captionOf(target));
}

void setEnglishCaption(QObject* target, const QString& english)
{
    if (!target)
        return;
    target->setProperty(englishProperty, english);
    show(target, captionOf(target));
}

void setCaption(QComboBox* combo, int index, const QString& turkish, const QString& suffix)
{
    if (!combo || index < 0 || index >= combo->count())
        return;
    QVariantList items = combo->property(itemsProperty).toList();
    while (items.size() <= index)
        items.append(QStringList{ QString(), QString() });
    items[index] = QStringList{ turkish, suffix };
    combo->setProperty(itemsProperty, items);
    combo->setItemText(index, Translate(turkish) + suffix);
}

QString Caption::key(const QObject* target)
{
    return target ? target->property(keyProperty).toString() : QString();
}

void Caption::apply(QObject* target)
{
    if (!target)
        return;
    const QVariant key = target->property(keyProperty);
    if (key.isValid())
        show(target, captionOf(target));
    if (auto* combo = qobject_cast<QComboBox*>(target))
        applyItems(combo);
}

void Caption::applyAll()
{
    QSet<QObject*> seen;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        apply(widget);
        const QList<QAction*> actions = widget->findChildren<QAction*>(Qt::FindDirectChildrenOnly);
        for (QAction* action : actions + widget->actions()) {
            if (seen.contains(action))
                continue;
            seen.insert(action);
            apply(action);
        }
    }
    QEvent change(QEvent::LanguageChange);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        QCoreApplication::sendEvent(window, &change);
}
