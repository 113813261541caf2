#include "ui/common/ChoiceDelegate.h"

#include "ui/users/UserTableModel.h"

#include <QComboBox>
#include <QDateTimeEdit>

ChoiceDelegate::ChoiceDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{ }

QWidget* ChoiceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    const QVariantList choices = index.data(UserTableModel::ChoicesRole).toList();
    if (choices.isEmpty()) {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        // Dates and times read left to right in every language.
        if (qobject_cast<QDateTimeEdit*>(editor))
            editor->setLayoutDirection(Qt::LeftToRight);
        return editor;
    }
    auto* combo = new QComboBox(parent);
    for (const QVariant& choice : choices) {
        const QVariantList pair = choice.toList();
        combo->addItem(pair.value(1).toString(), pair.value(0));
    }
    return combo;
}

void ChoiceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        const int at = combo->findData(index.data(Qt::EditRole).toInt());
        combo->setCurrentIndex(at);
        return;
    }
    QStyledItemDelegate::setEditorData(editor, index);
}

void ChoiceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        if (combo->currentIndex() >= 0)
            model->setData(index, combo->currentData(), Qt::EditRole);
        return;
    }
    QStyledItemDelegate::setModelData(editor, model, index);
}
