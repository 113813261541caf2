#include "ui/common/NumberedNamePicker.h"

#include "ui/common/frmParameter.h"

#include <QStandardItemModel>

std::optional<NumberedName> pickNumberedName(QWidget* parent, const QString& title, const QString& numberColumn,
                                             const QString& nameColumn, const QList<NumberedName>& rows, int current)
{
    QStandardItemModel list(0, 2);
    list.setHorizontalHeaderLabels({ numberColumn, nameColumn });
    for (const NumberedName& row : rows) {
        auto* number = new QStandardItem;
        number->setData(row.number, Qt::DisplayRole);
        list.appendRow({ number, new QStandardItem(row.name) });
    }
    frmParameter dialog(&list, title, parent);
    if (current > 0)
        dialog.selectValue(numberColumn, current);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QVariant chosen = dialog.selectedValue(numberColumn);
    if (!chosen.isValid())
        return std::nullopt;
    return NumberedName{ chosen.toInt(), dialog.selectedValue(nameColumn).toString() };
}
