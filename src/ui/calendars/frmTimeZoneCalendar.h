#pragma once

#include "operations/configuration/GroupCalendarRow.h"
#include "ui/main/PageServices.h"

#include <QDialog>

class PanelWorkerBridge;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QStandardItemModel;
class QTableView;
class QTimeEdit;

// The group calendars window ("Geçiş Grubu Takvimi"): the grid of calendars 1..8 with their three
// group names, and below it the current calendar's fields. The type chooser cmbZoneCalendarType
// switches the date pickers off for "İki Saat Arası". cmdUpdatePG stores the fields as the
// calendar with that number (administrator), cmdRefreshPG reads the grid again, the two send
// buttons run on the panel worker.
class frmTimeZoneCalendar : public QDialog
{
    Q_OBJECT

public:
    frmTimeZoneCalendar(const PageServices& services, PanelWorkerBridge& bridge, QWidget* parent = nullptr);

    void reload();
    // The calendar the fields show.
    GroupCalendarRow current() const;
    void showRow(const GroupCalendarRow& row);
    bool store();
    void remove();
    void retranslate();

protected:
    void changeEvent(QEvent* event) override;

private:
    void showCurrentRow();
    void typeChosen();
    void loadGroups();
    void captionGrid();

    PageServices m_services;
    PanelWorkerBridge& m_bridge;
    QList<GroupCalendarRow> m_rows;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_name = nullptr;
    QComboBox* m_type = nullptr;
    QComboBox* m_groups[3] = {};
    QDateEdit* m_dates[2] = {};
    QTimeEdit* m_times[2] = {};
};
