#pragma once

#include <QDialog>

class Database;
class QCheckBox;

// "Canlı İzleme Ayarları": which refused passages the live monitor leaves out (anti-passback
// violations, refused passages, unknown cards). cmOk stores the three switches in ProgInit;
// whoever opens the form checks the administrator rights first.
class frmMonitorSetup : public QDialog
{
    Q_OBJECT

public:
    explicit frmMonitorSetup(const Database& db, QWidget* parent = nullptr);

    // Stores the switches and closes the form; a refusal of the database is shown and it stays.
    bool save();

private:
    const Database& m_db;
    QCheckBox* m_noAntipassback = nullptr;
    QCheckBox* m_noDenied = nullptr;
    QCheckBox* m_noUnknown = nullptr;
};
