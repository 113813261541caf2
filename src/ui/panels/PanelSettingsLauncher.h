#pragma once

#include "ui/main/PageServices.h"

#include <QList>
#include <QObject>
#include <QPointer>

class PanelRoster;
class PanelWorkerBridge;
class frmPanelSettings;
class QWidget;

// Opens the panel settings window: for a panel of the list (double click) and for a new panel
// (the first slot not in use, or a new row). One window per slot; asking again brings it up.
class PanelSettingsLauncher : public QObject
{
    Q_OBJECT

public:
    PanelSettingsLauncher(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster, QWidget* window,
                          QObject* parent = nullptr);

    // The window of the panel at this roster position.
    frmPanelSettings* openPosition(int position);
    // Finds a slot for a new panel on the worker, then opens its window.
    void openNew();
    frmPanelSettings* openSlot(qint32 order);
    // The open settings windows.
    QList<frmPanelSettings*> windows() const;

private:
    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    QPointer<QWidget> m_window;
    QList<QPointer<frmPanelSettings>> m_forms;
};
