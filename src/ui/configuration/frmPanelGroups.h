#pragma once

#include <QDialog>

class Database;
class Operator;
class OperatorSession;
class QDataWidgetMapper;
class QLabel;
class QLineEdit;
class QStandardItemModel;
class QTableView;

// The global zone window "Global Kapı Bölgeleri": the zones in the grid grdPanelGroups, edited
// in place. Names are changed in their rows; a zone is added on the grid's last line (marked
// "*"), taking the lowest free number unless one is typed; cmdUpdatePG stores every edit at once
// and cmdRefreshPG reads the table again, dropping what was not stored. The Delete key deletes
// the current zone after a question, unless something still uses it. Storing and deleting need
// administrator rights.
class frmPanelGroups : public QDialog
{
    Q_OBJECT

public:
    frmPanelGroups(Database& db, const OperatorSession& session, Operator& op, QWidget* parent = nullptr);

    // Opens the window over `parent` and waits until it is closed; true when zones were stored or
    // deleted meanwhile, so the caller shows zone names again.
    static bool open(QWidget* parent, Database& db, const OperatorSession& session, Operator& op);

    // True once a zone was stored or deleted through this window.
    bool zonesChanged() const { return m_zonesChanged; }
    // Grid row that is current; -1 for none.
    int currentRow() const;

    void reload();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void store();
    void removeCurrent();
    void appendNewLine();
    void takeNewLine(int row);
    bool isNewLine(int row) const;
    bool isStored(int row) const;
    QList<int> pendingNumbers() const;
    void selectRow(int row);
    // The row showing zone `number`; with newFirst a row not stored yet is preferred.
    void selectNumber(int number, bool newFirst = false);
    void showCurrent();
    void captionHeaders();
    void finishEditing();

    Database& m_db;
    const OperatorSession& m_session;
    Operator& m_op;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QLabel* m_position = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_name = nullptr;
    QDataWidgetMapper* m_mapper = nullptr;
    bool m_filling = false;
    bool m_zonesChanged = false;
};
