#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class QAbstractItemView;
class QDialog;
class QLineEdit;

// Small helpers for driving windows in tests: typing any text (Turkish letters included), pressing
// named buttons, and answering a modal dialog that is about to block the test.
class WindowDriver
{
public:
    // Sends each character as its own key event (keyClicks refuses non-ASCII text).
    static void type(QWidget* widget, const QString& text);
    // Clicks the named button inside `window`; fails the test when there is none.
    static void click(QWidget* window, const QString& buttonName);
    // The named control inside `window`, with a warning when there is none (for fixtures whose
    // callers check the result themselves).
    template <typename T> static T* find(const QWidget* window, const QString& name)
    {
        T* child = window->findChild<T*>(name);
        if (!child)
            qWarning("no control named %s", qPrintable(name));
        return child;
    }
    // Clicks the named button inside `window`; false when it is missing or disabled.
    static bool clickEnabled(const QWidget* window, const QString& name);
    // The line editor open in a grid, or null. Editors closed earlier may linger until deleted.
    static QLineEdit* openEditor(const QAbstractItemView* grid);
    // Chooses a row of the search list that opens next (grdSearch, then cmdSelect); its title
    // goes to `title` when given.
    static void choosePickerRow(int row, QString* title = nullptr);
    // Runs `handle` on the next modal dialog once it is open (e.g. to fill it and close it).
    static void whenModal(std::function<void(QDialog*)> handle);
};
