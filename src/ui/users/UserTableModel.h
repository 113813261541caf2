#pragma once

#include "operations/users/UserRow.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QList>
#include <QMap>

// The users page's table: every column of Users editable in place. Edited and new rows are kept
// apart until they are saved; columns that pick a row of another table (user type, access mode,
// group, company, department, block) show that row's name and edit its number.
class UserTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Id,
        Card,
        Name,
        Surname,
        UserType,
        Pin,
        PassageMode,
        Group,
        CalendarActive,
        CalendarNo,
        TemporaryActive,
        TemporaryGroup,
        TemporaryDate,
        TemporaryTime,
        Company,
        Department,
        Block,
        Flat,
        Plate,
        IdentityNo,
        Address,
        Picture,
        ColumnCount
    };
    // Role under which a picker column gives its choices (a QVariantList of {number, name} pairs).
    static constexpr int ChoicesRole = Qt::UserRole + 1;

    explicit UserTableModel(QObject* parent = nullptr);

    // The column of Users each grid column shows (also the key of its translated header).
    static QString columnName(int column);
    // The column's heading in Turkish (translated when shown).
    static QString columnCaption(int column);

    void setRows(const QList<UserRow>& rows);
    // Names for the numbers of a picker column.
    void setChoices(int column, const QMap<int, QString>& choices);

    const UserRow& row(int index) const { return m_rows.at(index); }
    int appendRow(const UserRow& row);
    void removeRowAt(int index);
    // Rows changed or added since the last save, by index.
    QList<int> pendingRows() const;
    bool isPending(int index) const { return m_pending.value(index, false); }
    // After a successful save of that row (a new row gets its record number).
    void markSaved(int index, const UserRow& stored);
    // Changes one row from outside the grid (the picture button) and marks it pending.
    void replaceRow(int index, const UserRow& row);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Headers follow the current language.
    void retranslate();

private:
    static bool isChoiceColumn(int column);
    // A name as a right-to-left grid must show it.
    static QString isolated(const QString& name);
    static bool isFlagColumn(int column);
    QVariant editValue(const UserRow& row, int column) const;
    bool setEditValue(UserRow& row, int column, const QVariant& value);

    QList<UserRow> m_rows;
    QHash<int, bool> m_pending;
    QHash<int, QMap<int, QString>> m_choices;
};
