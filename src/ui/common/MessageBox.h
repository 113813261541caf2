#pragma once

#include "store/Message.h"

#include <QMessageBox>
#include <QStringList>

// Every message box of the station goes through here, so that tests can answer a box before it
// would appear and read back what the person would have been shown.
class MessageBox
{
public:
    // The next box returns this answer at once instead of showing itself; answers queue up.
    static void setNextAnswer(QMessageBox::StandardButton answer);
    // Used by every box that has no queued answer (NoButton: show the box and wait).
    static void setDefaultAnswer(QMessageBox::StandardButton answer);
    // The Turkish text of every box shown (or answered) so far, oldest first.
    static QStringList shownTexts();
    static QString lastShownText();
    static void clearShownTexts();
    // The title of every box (the station's name).
    static void setTitle(const QString& title);

    static QMessageBox::StandardButton information(QWidget* parent, const Message& message);
    static QMessageBox::StandardButton warning(QWidget* parent, const Message& message);
    static QMessageBox::StandardButton critical(QWidget* parent, const Message& message);
    // A Yes/No question; No is the default button.
    static QMessageBox::StandardButton question(QWidget* parent, const Message& message,
                                                QMessageBox::StandardButtons buttons
                                                = QMessageBox::Yes | QMessageBox::No,
                                                QMessageBox::StandardButton defaultButton = QMessageBox::No);

private:
    static QMessageBox::StandardButton show(QWidget* parent, QMessageBox::Icon icon, const Message& message,
                                            QMessageBox::StandardButtons buttons,
                                            QMessageBox::StandardButton defaultButton);
};
