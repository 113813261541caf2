#pragma once

#include "operations/configuration/TimeGroupRow.h"
#include "ui/main/PageServices.h"

#include <QWidget>

class PanelRoster;
class PanelWorkerBridge;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStandardItemModel;
class QTabWidget;
class QTableView;

// The time groups page: the grid datTimeGroups with the current time group's number, name and
// restriction type below it, and its buttons. cmdAddNewTimeGroup switches new-entry mode on
// ("Vazgeç") and off ("Yeni"); cmdLastTimeGroup proposes the number after the highest one (and
// switches new-entry mode on); cmdUpdateTimeGroup stores a new time group or the current one's
// changes; cmdTimeGroupSettings opens frmTimeGroupSettings on the current time group, and what it
// hands back is stored at once (in new-entry mode it waits for cmdUpdateTimeGroup). Storing and
// deleting need administrator rights. The send and erase buttons run on the panel worker, for the
// panel selected on the panels page.
class TimeGroupsPage : public QWidget
{
    Q_OBJECT

public:
    TimeGroupsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                   QWidget* parent = nullptr);

    // Makes the page and adds it to the tabs (which own it from then on).
    static TimeGroupsPage* install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                                   PanelRoster& roster);

    // Reads the time groups again, keeping the current one when it is still there.
    void reload();
    // Makes the time group with this number the current one; false when it is not listed.
    bool selectNumber(int number);
    // The time group the fields show (the one being entered in new-entry mode).
    TimeGroupRow current() const;
    bool isNewEntry() const { return m_newEntry; }

    // The buttons' work, callable without clicking.
    void toggleNewEntry();
    void proposeNumber();
    bool store();
    void remove();
    void find();
    void openSettings();

    void retranslate();

Q_SIGNALS:
    // Time groups were stored or deleted (pickers that list them read them again).
    void timeGroupsChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    void setNewEntry(bool on);
    void showRow(const TimeGroupRow& row);
    void showCurrentRow();
    void loadTypes();
    void showSelectedPanel();
    void captionGrid();
    int currentGridRow() const;
    QPushButton* addButton(const QString& name, const QString& turkish);

    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    QList<TimeGroupRow> m_rows;
    TimeGroupRow m_current;
    bool m_newEntry = false;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_name = nullptr;
    QComboBox* m_type = nullptr;
    QLabel* m_selectedPanel = nullptr;
    QPushButton* m_newButton = nullptr;
};
