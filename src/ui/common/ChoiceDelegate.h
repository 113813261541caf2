#pragma once

#include <QStyledItemDelegate>

// Edits a column that holds the number of a row of another table with a drop-down of that
// table's names; the choices come from the model (UserTableModel::ChoicesRole). Columns without
// choices are edited as usual.
class ChoiceDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit ChoiceDelegate(QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};
