#include "ui/common/LabelStatusOperator.h"

#include "store/Translate.h"

#include <QLabel>
#include <QMetaObject>

namespace {
const char* const turkishProperty = "kxTurkish";
}

LabelStatusOperator::LabelStatusOperator(Operator& inner, QLabel* label)
    : m_inner(inner)
    , m_label(label)
{ }

bool LabelStatusOperator::ask(const Message& question)
{
    return m_inner.ask(question);
}

void LabelStatusOperator::tell(const Message& message, Kind kind)
{
    m_inner.tell(message, kind);
}

void LabelStatusOperator::progress(int value, int maximum)
{
    m_inner.progress(value, maximum);
}

void LabelStatusOperator::status(const Message& line)
{
    if (!m_label)
        return;
    QPointer<QLabel> label = m_label;
    // Queued: the worker need not wait for the window to draw a status line.
    QMetaObject::invokeMethod(
        label.data(),
        [label, line] {
            if (!label)
                return;
            label->setProperty(turkishProperty, line.turkish());
            label->setText(Translate(line));
        },
        Qt::AutoConnection);
}

void LabelStatusOperator::requestLogin()
{
    m_inner.requestLogin();
}

bool LabelStatusOperator::cancelRequested() const
{
    return m_inner.cancelRequested();
}

QString LabelStatusOperator::turkishText(const QLabel* label)
{
    return label ? label->property(turkishProperty).toString() : QString();
}
