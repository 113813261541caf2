#include "WindowDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

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
