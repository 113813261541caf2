#pragma once

#include <QString>
#include <functional>

class QDialog;
class QWidget;

// Small helpers for driving windows in tests: typing any text (Turkish letters included), pressing
// named buttons, and answering a modal dialog that is about to block the test.
class WindowDriver
{
public:
    // Sends each character as its own key event (keyClicks refuses non-ASCII text).
    static void type(QWidget* widget, const QString& text);
    // Clicks the named button inside `window`; fails the test when there is none.
    static void click(QWidget* window, const QString& buttonName);
    // Runs `handle` on the next modal dialog once it is open (e.g. to fill it and close it).
    static void whenModal(std::function<void(QDialog*)> handle);
};
