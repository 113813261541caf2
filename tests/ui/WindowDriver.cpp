#include "WindowDriver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

void WindowDriver::type(QWidget* widget, const QString& text)
{
    for (const QChar ch : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
}

void WindowDriver::click(QWidget* window, const QString& buttonName)
{
    auto* button = window->findChild<QAbstractButton*>(buttonName);
    QVERIFY2(button, qPrintable(buttonName));
    button->click();
}

bool WindowDriver::clickEnabled(const QWidget* window, const QString& name)
{
    auto* button = find<QAbstractButton>(window, name);
    if (!button || !button->isEnabled())
        return false;
    button->click();
    return true;
}

QLineEdit* WindowDriver::openEditor(const QAbstractItemView* grid)
{
    QLineEdit* editor = nullptr;
    for (QLineEdit* candidate : grid->viewport()->findChildren<QLineEdit*>()) {
        if (candidate->isVisible())
            editor = candidate;
    }
    return editor;
}

void WindowDriver::choosePickerRow(int row, QString* title)
{
    whenModal([row, title](QDialog* dialog) {
        if (title)
            *title = dialog->windowTitle();
        auto* grid = dialog->findChild<QAbstractItemView*>(u"grdSearch"_s);
        QVERIFY(grid);
        grid->setCurrentIndex(grid->model()->index(row, 0));
        click(dialog, u"cmdSelect"_s);
    });
}

void WindowDriver::whenModal(std::function<void(QDialog*)> handle)
{
    // Polls until the dialog's own event loop runs; gives up after a while so a test fails
    // instead of waiting forever.
    auto* timer = new QTimer;
    auto* waited = new int(0);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, waited, handle] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog && ++*waited < 500)
            return;
        timer->stop();
        timer->deleteLater();
        delete waited;
        if (dialog)
            handle(dialog);
    });
    timer->start(10);
}
