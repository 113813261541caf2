#pragma once

#include "store/LookupTable.h"

#include <QDialog>
#include <QSet>

class Database;
class Operator;
class OperatorSession;
class QLabel;
class QPushButton;
class QStandardItemModel;
class QTableView;

// The editing form of a company, department or block table (one form for the three; its object
// name is the form's name, frmSirketler and so on). Rows are edited in the grid and written with
// cmdUpdate; adding, updating and deleting need administrator rights.
class frmLookupTable : public QDialog
{
    Q_OBJECT

public:
    frmLookupTable(LookupTable::Kind kind, Database& db, const OperatorSession& session, Operator& op,
                   QWidget* parent = nullptr);

    LookupTable::Kind kind() const { return m_table.kind(); }
    bool isAdding() const { return m_newRow >= 0; }
    // Row of the grid that is current; -1 for none.
    int currentRow() const;

    void reload();

protected:
    void changeEvent(QEvent* event) override;

private:
    void add();
    void update();
    void remove();
    void endAdding();
    void selectRow(int row);
    void selectKey(int key);
    void showPosition();
    void captionHeaders();
    void lockOtherRows(bool locked);

    LookupTable m_table;
    Database& m_db;
    const OperatorSession& m_session;
    Operator& m_op;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QLabel* m_position = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_update = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_refresh = nullptr;
    QPushButton* m_close = nullptr;
    // The row being added, -1 when none.
    int m_newRow = -1;
    // Rows changed in the grid since the last reload.
    QSet<int> m_changed;
    bool m_filling = false;
};
