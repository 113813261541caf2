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
        QString name = pair.value(1).toString();
        // Right to left, "2 - Bayram" would read "Bayram - 2": a name takes the direction of its
        // own first letter.
        if (combo->layoutDirection() == Qt::RightToLeft && !name.isEmpty())
            name = QChar(0x2068) + name + QChar(0x2069);
        combo->addItem(name, pair.value(0));
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
