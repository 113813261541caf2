#pragma once

#include <QString>

class QComboBox;
class QObject;

// Shows a caption through Translate and keeps its Turkish text on the control, so that a change
// of language can show every caption of every open window again (Caption::applyAll).
// The caption is the translation of `turkish` followed by `suffix` as it stands (a number).
// Works for windows (title), tab pages (tab text), menus, actions, labels, buttons, group boxes
// and line edits (placeholder).
void setCaption(QObject* target, const QString& turkish, const QString& suffix = QString());
// For a control whose English caption differs from the text table's English for the same Turkish
// word (the table serves one English per Turkish text, a few windows were given their own): in
// English `english` is shown, in the other languages the caption set above.
void setEnglishCaption(QObject* target, const QString& english);
// The same for entry `index` of a combo box (the entry must exist).
void setCaption(QComboBox* combo, int index, const QString& turkish, const QString& suffix = QString());

class Caption
{
public:
    // The Turkish text kept on a control; empty when it has none.
    static QString key(const QObject* target);
    // Shows the kept caption(s) of one control again in the current language.
    static void apply(QObject* target);
    // Re-applies every kept caption of every widget and action, then sends a LanguageChange event
    // to each window so forms can rebuild texts that are not single captions (grid headers).
    static void applyAll();
};
