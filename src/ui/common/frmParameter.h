#pragma once

#include <QDialog>
#include <QVariant>

class QAbstractItemModel;
class QComboBox;
class QLabel;
class QLineEdit;
class QTableView;
class SearchProxyModel;

// The general search dialog: the person picks a column, types, sees the list narrow down while
// typing, and chooses a row; the caller gets that row's values and finds it in its own list.
class frmParameter : public QDialog
{
    Q_OBJECT

public:
    // Over a list the caller already has (not owned). Its header texts are the Turkish column names.
    frmParameter(QAbstractItemModel* list, const QString& title, QWidget* parent = nullptr);

    // The values of the chosen row, one per column; empty until a row was chosen with cmdSelect.
    QVariantList selectedValues() const { return m_selected; }
    // The chosen row's value in the named (Turkish) column.
    QVariant selectedValue(const QString& column) const;
    // The Turkish name of the column chosen in cmbSearchCriter; empty when none.
    QString searchColumn() const;
    int visibleRowCount() const;
    // Makes the row of the caller's list whose value in the named (Turkish) column equals value
    // the current one, so the dialog opens on what the calling field holds; false when none does.
    bool selectValue(const QString& column, const QVariant& value);

protected:
    void changeEvent(QEvent* event) override;

private:
    void build(QAbstractItemModel* list, const QString& title);
    void fillColumns();
    int columnIndex(const QString& turkishName) const;
    void filter();
    void find();
    void select();
    void showPosition();

    QAbstractItemModel* m_list = nullptr;
    SearchProxyModel* m_proxy = nullptr;
    QComboBox* m_column = nullptr;
    QLineEdit* m_text = nullptr;
    QTableView* m_grid = nullptr;
    QLabel* m_position = nullptr;
    QVariantList m_selected;
};
