#pragma once

#include "ui/main/PageServices.h"

#include <QList>
#include <QWidget>
#include <utility>

class PanelGrid;
class PanelRoster;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QTableWidget;
class QTimeEdit;

// The visitors page: registering a visit (the visitor card handed out, who came, whom they visit,
// why, the plate, the group, the date and time), the list of a day's visits, and deleting a
// visit (administrator rights). FlexPanelVisitor lists the panels as the other pages do.
class VisitorsPage : public QWidget
{
    Q_OBJECT

public:
    VisitorsPage(const PageServices& services, PanelRoster& roster, QWidget* parent = nullptr);

    // Reads the visitor cards, the persons, the groups and the day's visits again.
    void reload();
    void reloadVisits();
    // Visit number of the row selected in the list, 0 when none.
    qint64 selectedVisitNo() const;
    bool registerVisit();
    void deleteVisit();

    PanelGrid* panelGrid() const { return m_grid; }
    void retranslate();

protected:
    // Visitor cards, persons and groups change in other windows: read them again on showing.
    void showEvent(QShowEvent* event) override;

private:
    QDateTime now() const;
    // Puts the clock's date and minute into the visit's date and time fields.
    void showNowInFields();
    // The moment a new visit is registered at: the save's own time, unless the operator typed
    // another date or time into the fields.
    QDateTime visitMoment() const;
    // Entries (number, name) as "number - name", the chosen number kept when it is still there.
    void fillCombo(QComboBox* combo, const QList<std::pair<int, QString>>& entries);

    PageServices m_services;
    PanelGrid* m_grid = nullptr;
    QComboBox* m_card = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_surname = nullptr;
    QLineEdit* m_identity = nullptr;
    QLineEdit* m_plate = nullptr;
    QComboBox* m_visited = nullptr;
    QLineEdit* m_reason = nullptr;
    QComboBox* m_group = nullptr;
    QDateEdit* m_date = nullptr;
    QTimeEdit* m_time = nullptr;
    // What showNowInFields() last put into the fields, to tell the operator's own entry from it.
    QDateTime m_shownNow;
    QDateEdit* m_listDay = nullptr;
    QTableWidget* m_visits = nullptr;
};
