#pragma once

#include <QGroupBox>
#include <functional>

class Database;
class PanelTargetBox;
class PanelWorkerBridge;
class QComboBox;
class QLabel;
class QPushButton;

// The counter buttons: anti-passback memory (all users, the selected user), access counters
// (all, the selected user, reading the user's), the offline record memory (erase, read its
// count into lblRecordCounter) and the number of group members inside (all groups, the chosen
// group, reading it).
class CountersBox : public QGroupBox
{
    Q_OBJECT

public:
    CountersBox(PanelWorkerBridge& bridge, PanelTargetBox& target, PanelTargetBox& recordTarget, Database& db,
                std::function<qint64()> selectedUser, QWidget* parent = nullptr);

    // Reads the access groups into the group choice again.
    void refreshGroups();
    // "Grup No" of the chosen group, 0 when there is none.
    int selectedGroup() const;

protected:
    // Groups are edited in other windows: the choice is read again whenever the box shows.
    void showEvent(QShowEvent* event) override;

private:
    QPushButton* addButton(const QString& name);

    PanelWorkerBridge& m_bridge;
    PanelTargetBox& m_target;
    PanelTargetBox& m_recordTarget;
    Database& m_db;
    std::function<qint64()> m_selectedUser;
    QComboBox* m_groups = nullptr;
    QLabel* m_recordCounter = nullptr;
};
