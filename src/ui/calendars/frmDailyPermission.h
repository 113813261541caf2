#pragma once

#include "operations/configuration/DailyPermissionRepository.h"
#include "ui/main/PageServices.h"

#include <QDialog>
#include <memory>

class Operator;

class PanelWorkerBridge;
class QCheckBox;
class QProgressBar;
class QStandardItemModel;
class QTableView;
class QTimeEdit;

// The daily approval list of one access group: its members in grdDailyPerm with the approval as
// a check column ("Evet"/"Hayır"), approving or cancelling all at once, storing the grid's edits,
// and sending the list to the selected panel. Below it, the station-wide setting of the time at
// which every approval falls back to no.
class frmDailyPermission : public QDialog
{
    Q_OBJECT

public:
    frmDailyPermission(const PageServices& services, PanelWorkerBridge& bridge, int group, QWidget* parent = nullptr);
    ~frmDailyPermission() override;

    // Opens the window for the group chosen on the groups page: refused with "Grup numarası
    // 0'dan büyük olmalıdır" for 0 and below (nothing opened, null returned). The window deletes
    // itself when closed.
    static frmDailyPermission* open(const PageServices& services, PanelWorkerBridge& bridge, int group,
                                    QWidget* parent);

    void reload();
    // The grid as the members with the approvals as ticked.
    QList<DailyPermissionRepository::Member> gridMembers() const;
    bool save();
    void setAll(bool approved);
    void send();
    void retranslate();

protected:
    void changeEvent(QEvent* event) override;

private:
    void captionGrid();
    void showResetPlan();
    void storeResetPlan();

    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    int m_group = 0;
    QString m_groupName;
    QList<DailyPermissionRepository::Member> m_members;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QProgressBar* m_progress = nullptr;
    QCheckBox* m_resetOn = nullptr;
    QTimeEdit* m_resetTime = nullptr;
    QCheckBox* m_resetPanels = nullptr;
    bool m_showingPlan = false;
    std::shared_ptr<Operator> m_operator;
};
