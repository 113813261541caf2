#pragma once

#include <QDialog>

class PanelWorkerBridge;
class QDateEdit;
class QPushButton;
class QTableWidget;
class frmMain;

// Backups by hand: the backups of the backup folder in lstBackups (newest first), cmdBackupNow to
// make a checked backup, cmdVerifyBackup to open the chosen one and count its passage records,
// and cmdDeleteRecords to remove the passage records dated before dtDeleteBefore after a checked
// backup. The work runs on the panel worker, one thing at a time; the rules are the command
// line's: server station only, and the removal asks first and needs administrator rights.
class frmBackup : public QDialog
{
    Q_OBJECT

public:
    frmBackup(const QString& backupFolder, PanelWorkerBridge& bridge, QWidget* parent = nullptr);

    // Shows the window of the main window (one at a time).
    static frmBackup* open(frmMain& window, PanelWorkerBridge& bridge);

    void reload();
    bool backupNow();
    bool verifySelected();
    bool deleteRecords();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    QString selectedPath() const;

    QString m_folder;
    PanelWorkerBridge& m_bridge;
    QTableWidget* m_list = nullptr;
    QPushButton* m_backupNow = nullptr;
    QPushButton* m_verify = nullptr;
    QDateEdit* m_before = nullptr;
    QPushButton* m_delete = nullptr;
};
