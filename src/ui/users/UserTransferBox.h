#pragma once

#include <QGroupBox>
#include <functional>

class PanelTargetBox;
class PanelWorkerBridge;
class QCheckBox;
class QLineEdit;
class QPushButton;

// The buttons that move users between the database and the panels: send all users (or the ID
// range typed in the two boxes), send the selected user, erase the card memory, delete the
// selected user, and receive a range or the selected user from the selected panel.
class UserTransferBox : public QGroupBox
{
    Q_OBJECT

public:
    // selectedUser gives the record number of the user selected on the users page (0: none).
    UserTransferBox(PanelWorkerBridge& bridge, PanelTargetBox& target, std::function<qint64()> selectedUser,
                    QWidget* parent = nullptr);

Q_SIGNALS:
    // Users were read from a panel into the database.
    void usersReceived();

private:
    QPushButton* addButton(const QString& name);

    PanelWorkerBridge& m_bridge;
    PanelTargetBox& m_target;
    std::function<qint64()> m_selectedUser;
    QCheckBox* m_allUsers = nullptr;
    QLineEdit* m_firstId = nullptr;
    QLineEdit* m_lastId = nullptr;
};
