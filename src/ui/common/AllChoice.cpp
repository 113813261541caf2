#include "ui/common/AllChoice.h"

#include <QCheckBox>
#include <QPointer>

void AllChoice::link(QCheckBox* all, const QList<QWidget*>& controls)
{
    QList<QPointer<QWidget>> guarded;
    for (QWidget* control : controls)
        guarded.append(control);
    auto apply = [guarded](bool allChosen) {
        for (const QPointer<QWidget>& control : guarded) {
            if (control)
                control->setEnabled(!allChosen);
        }
    };
    QObject::connect(all, &QCheckBox::toggled, all, apply);
    apply(all->isChecked());
}
