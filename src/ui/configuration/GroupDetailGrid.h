#pragma once

#include "operations/configuration/GroupDetailRow.h"

#include <QHash>
#include <QTableView>

class Database;
class QStandardItem;
class QStandardItemModel;

// The detail grid datGroupsDetail: one row per panel in use of the current access group, with the
// panel's name, a check box per door (shown with the door's name), and each door's time group and
// global zone by name. A time group or zone cell opens its picker on a double click or Enter;
// Delete takes a door's time group away. Edits stay in the grid until rows() is stored.
class GroupDetailGrid : public QTableView
{
    Q_OBJECT

public:
    enum Column
    {
        PanelNo = 0,
        PanelName = 1,
        FirstDoor = 2,
        FirstTimeGroup = 6,
        FirstZone = 10,
        ColumnCount = 14
    };

    GroupDetailGrid(const Database& db, QWidget* parent = nullptr);

    void setRows(const QList<GroupDetailRow>& rows);
    // The rows with the grid's edits.
    QList<GroupDetailRow> rows() const;
    // The row of the current cell; nullptr when there is none.
    const GroupDetailRow* currentDetail() const;
    // The picker of a time group or zone cell, as a double click opens it.
    void pick(const QModelIndex& index);
    void setTimeGroup(int row, int door, int number);
    void setZone(int row, int door, int number);
    void retranslate();

    // The door's name from the panel's settings, or "Kapı n" when it has none.
    static QString doorName(const GroupDetailRow& row, int door);

Q_SIGNALS:
    void currentDetailChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void readNames();
    void showRow(int row);
    QString timeGroupText(int number) const;
    QString zoneText(int number) const;

    const Database& m_db;
    QStandardItemModel* m_model = nullptr;
    QList<GroupDetailRow> m_rows;
    QHash<int, QString> m_timeGroupNames;
    QHash<int, QString> m_zoneNames;
    bool m_filling = false;
};
