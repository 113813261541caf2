#include "ui/common/MessageBox.h"

#include "store/Translate.h"

#include <QQueue>

namespace {
QQueue<QMessageBox::StandardButton> s_answers;
QMessageBox::StandardButton s_defaultAnswer = QMessageBox::NoButton;
QStringList s_shown;
QString s_title = QStringLiteral("KX-410");
} // namespace

void MessageBox::setNextAnswer(QMessageBox::StandardButton answer)
{
    s_answers.enqueue(answer);
}

void MessageBox::setDefaultAnswer(QMessageBox::StandardButton answer)
{
    s_defaultAnswer = answer;
}

QStringList MessageBox::shownTexts()
{
    return s_shown;
}

QString MessageBox::lastShownText()
{
    return s_shown.isEmpty() ? QString() : s_shown.constLast();
}

void MessageBox::clearShownTexts()
{
    s_shown.clear();
}

void MessageBox::setTitle(const QString& title)
{
    s_title = title;
}

QMessageBox::StandardButton MessageBox::information(QWidget* parent, const Message& message)
{
    return show(parent, QMessageBox::Information, message, QMessageBox::Ok, QMessageBox::Ok);
}

QMessageBox::StandardButton MessageBox::warning(QWidget* parent, const Message& message)
{
    return show(parent, QMessageBox::Warning, message, QMessageBox::Ok, QMessageBox::Ok);
}

QMessageBox::StandardButton MessageBox::critical(QWidget* parent, const Message& message)
{
    return show(parent, QMessageBox::Critical, message, QMessageBox::Ok, QMessageBox::Ok);
}

QMessageBox::StandardButton MessageBox::question(QWidget* parent, const Message& message,
                                                 QMessageBox::StandardButtons buttons,
                                                 QMessageBox::StandardButton defaultButton)
{
    return show(parent, QMessageBox::Question, message, buttons, defaultButton);
}

QMessageBox::StandardButton MessageBox::show(QWidget* parent, QMessageBox::Icon icon, const Message& message,
                                             QMessageBox::StandardButtons buttons,
                                             QMessageBox::StandardButton defaultButton)
{
    s_shown.append(message.turkish());
    if (!s_answers.isEmpty())
        return s_answers.dequeue();
    if (s_defaultAnswer != QMessageBox::NoButton)
        return s_defaultAnswer;

    QMessageBox box(icon, Translate(s_title), Translate(message), buttons, parent);
    box.setDefaultButton(defaultButton);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}
