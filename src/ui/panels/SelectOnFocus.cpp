#include "ui/panels/SelectOnFocus.h"

#include <QEvent>
#include <QLineEdit>
#include <QTimer>

SelectOnFocus::SelectOnFocus(QObject* parent)
    : QObject(parent)
{ }

void SelectOnFocus::install(QLineEdit* edit)
{
    edit->installEventFilter(new SelectOnFocus(edit));
}

bool SelectOnFocus::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        auto* edit = qobject_cast<QLineEdit*>(watched);
        // After the click that brought the focus has placed the cursor.
        if (edit)
            QTimer::singleShot(0, edit, &QLineEdit::selectAll);
    }
    return QObject::eventFilter(watched, event);
}
