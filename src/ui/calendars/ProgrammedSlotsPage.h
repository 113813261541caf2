#pragma once

#include "protocol/ProgrammedSlot.h"
#include "ui/main/PageServices.h"

#include <QWidget>

class PanelRoster;
class PanelWorkerBridge;
class QLabel;
class QPushButton;
class QStandardItemModel;
class QTabBar;
class QTabWidget;
class QTableView;

// The ring-day page: the programmed door operations of the panel selected on the panels page.
// TabRingDays has one tab per weekday; the grid grdProgRelay shows that weekday's 16 slots (the
// panel's rows are made the first time it is shown here), with the times as hh:mm and the doors
// and relays as check boxes. cmdCopyFromMonday (not on Monday) copies Monday's slots and stores
// them; cmdUpdateZilTakvimi stores the grid (both need administrator rights);
// cmdRefreshZilTakvimi reads it again; cmdSendCalendar and cmdReceiveCalendar run on the panel
// worker. cmdGroupCalendar opens frmTimeZoneCalendar.
class ProgrammedSlotsPage : public QWidget
{
    Q_OBJECT

public:
    ProgrammedSlotsPage(const PageServices& services, PanelWorkerBridge& bridge, PanelRoster& roster,
                        QWidget* parent = nullptr);

    // Makes the page and adds it to the tabs (which own it from then on).
    static ProgrammedSlotsPage* install(QTabWidget* tabs, const PageServices& services, PanelWorkerBridge& bridge,
                                        PanelRoster& roster);

    // The weekday shown, 1 = Monday.
    int weekday() const;
    void showWeekday(int weekday);
    // Reads the shown weekday of the selected panel again.
    void reload();
    // The grid as slots; false (and the person told) when a time cannot be read.
    bool gridSlots(QList<ProgrammedSlot>* slotList);
    bool store();
    void copyFromMonday();
    void openGroupCalendars();
    void retranslate();

protected:
    void changeEvent(QEvent* event) override;

private:
    int panelNumber() const;
    void captionGrid();
    void showSelectedPanel();
    QPushButton* addButton(const QString& name, const QString& turkish);

    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    PanelRoster& m_roster;
    QList<ProgrammedSlot> m_slots;
    QTabBar* m_days = nullptr;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QLabel* m_selectedPanel = nullptr;
    QPushButton* m_copy = nullptr;
};
