#pragma once

#include "operations/configuration/GroupMasterRow.h"
#include "ui/main/PageServices.h"

#include <QWidget>

class GroupDetailGrid;
class PanelRoster;
class PanelWorkerBridge;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStandardItemModel;
class QTabWidget;
class QTableView;

// The access groups page: the master grid datGroupsMaster with the current group's number, name,
// counters and switches below it, and the detail grid datGroupsDetail with what the group may do
// on each panel in use. cmdAddNewGroup switches new-entry mode on ("Vazgeç") and off ("Yeni");
// cmdLastGroupNo proposes the number after the highest one; cmdUpdateGroup stores the group with
// the detail grid's edits (a new one with one row per panel slot), cmdUpdateAllGroups only the
// detail grid's edits. Storing and deleting need administrator rights. The send and erase buttons
// run on the panel worker, for the panel selected on the panels page.
class GroupsPage : public QWidget
{
    Q_OBJECT

public:
    GroupsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster, QWidget* parent = nullptr);

    // Makes the page and adds it to the tabs (which own it from then on).
    static GroupsPage* install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                               PanelRoster& roster);

    // Reads the groups again, keeping the current one when it is still there.
    void reload();
    // Makes the group with this number the current one; false when it is not listed.
    bool selectNumber(int number);
    bool isNewEntry() const { return m_newEntry; }
    // The group of the master grid's current row; 0 when there is none.
    int currentNumber() const;
    GroupDetailGrid* detailGrid() const { return m_detail; }

    // The buttons' work, callable without clicking.
    void toggleNewEntry();
    void proposeNumber();
    bool store();
    bool storeDetails();
    void remove();
    void find();
    void selectGroupNumber();
    void refresh();
    void requestDailyPermission();

    void retranslate();

Q_SIGNALS:
    // Groups were stored or deleted (lists that show them read them again).
    void groupsChanged();
    // The daily permission window is asked for this group.
    void dailyPermissionRequested(int groupNo);

protected:
    void changeEvent(QEvent* event) override;

private:
    void setNewEntry(bool on);
    void showMaster(const GroupMasterRow& row);
    void showCurrentRow();
    void showDetailTitle();
    void showSelectedPanel();
    GroupMasterRow typedMaster(bool* numberOk) const;
    int currentGridRow() const;
    void pickZone(QLineEdit* field);
    QPushButton* addButton(const QString& name, const QString& turkish);

    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    QList<GroupMasterRow> m_rows;
    bool m_newEntry = false;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    GroupDetailGrid* m_detail = nullptr;
    QLabel* m_detailTitle = nullptr;
    QLabel* m_detailRow = nullptr;
    QLabel* m_selectedPanel = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_accessCount = nullptr;
    QLineEdit* m_accessCountZone = nullptr;
    QLineEdit* m_insideCount = nullptr;
    QLineEdit* m_insideCountZone = nullptr;
    QCheckBox* m_dailyApproval = nullptr;
    QCheckBox* m_repeatBlockOff = nullptr;
    QCheckBox* m_localCapacityOff = nullptr;
    QCheckBox* m_clearInsideAtNight = nullptr;
    QCheckBox* m_antiPassbackOff = nullptr;
    QPushButton* m_newButton = nullptr;
};
