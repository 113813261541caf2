#pragma once

#include "store/StationSettings.h"

#include <QDialog>

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QListWidget;

// The start-up dialog: server or client, the client's database, the panels a client watches and
// the interface language. It only gathers the choices; StationSettings checks and takes them.
class frmStart : public QDialog
{
    Q_OBJECT

public:
    explicit frmStart(const StationSettings& settings, QWidget* parent = nullptr);

    // The record with the confirmed choices (meaningful after the dialog was accepted).
    StationSettings settings() const { return m_settings; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void chooseDatabase();
    void save();
    void fillPanelList();

    StationSettings m_settings;
    QButtonGroup* m_mode = nullptr;
    QLineEdit* m_remoteName = nullptr;
    QListWidget* m_panels = nullptr;
    QComboBox* m_language = nullptr;
};
