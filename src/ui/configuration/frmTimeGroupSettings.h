#pragma once

#include "operations/configuration/TimeGroupRow.h"

#include <QDate>
#include <QDialog>
#include <array>

class MonthDaysBox;
class QCheckBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QSlider;
class QSpinBox;
class QTimeEdit;
class WeekPlanBox;

// "Zaman Bölge Tipi Ayarları": the restriction fields of one time group, showing only the
// controls of its type (lblTimeGroupType names it):
//  - fraTwoDates "İki Tarih Arası" (1, 2): the pickers dtStart and dtEnd write the chosen day as
//    dd/mm/yyyy into txtStartDate and txtEndDate;
//  - fraTwoHours "İki Saat Arası" (3, 4): tmStartTime, tmEndTime;
//  - fraWeekPlan (5, 6, 9, 13), with each day's hours for 6 and 13;
//  - fraMonthPlan "Aylık Plan" (8);
//  - fraExtraHours "İlave Saat Kontrolü (Her Gün İçin Geçerli)" (9, 13): chkExtraWindow,
//    tmExtraStart, tmExtraEnd;
//  - fraMultiTime "Çoklu Saat Modu" (10): three start times txtStartTime0..2 (hh:mm) and the
//    track bar TBarHInsert writing the additional hours (1..8) into txtExtraHours;
//  - fraSixHours "Çoklu Saat Modu (6'lı Saat)" (11, 12): six hours txtSixHour0..5, the track bar
//    TBarInsertSixHour writing into the one last entered.
// cmdOK hands the values back through row(); cmdCancel drops them. The dialog stores nothing.
class frmTimeGroupSettings : public QDialog
{
    Q_OBJECT

public:
    // `today` is where the date pickers open when the row has no date.
    frmTimeGroupSettings(const TimeGroupRow& row, const QString& typeName, const QDate& today,
                         QWidget* parent = nullptr);

    // The row given, with the values of the controls.
    TimeGroupRow row() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QGroupBox* datesPane(const QDate& today);
    QGroupBox* hoursPane();
    QGroupBox* extraWindowPane();
    QGroupBox* multiTimePane();
    QGroupBox* sixHoursPane();
    void showPanes(int type);
    void fill();

    TimeGroupRow m_row;
    QLabel* m_type = nullptr;
    QLabel* m_noRestriction = nullptr;
    QGroupBox* m_datesPane = nullptr;
    QLineEdit* m_startDate = nullptr;
    QLineEdit* m_endDate = nullptr;
    QDateEdit* m_startPicker = nullptr;
    QDateEdit* m_endPicker = nullptr;
    QGroupBox* m_hoursPane = nullptr;
    QTimeEdit* m_startTime = nullptr;
    QTimeEdit* m_endTime = nullptr;
    WeekPlanBox* m_weekPlan = nullptr;
    MonthDaysBox* m_monthPlan = nullptr;
    QGroupBox* m_extraPane = nullptr;
    QCheckBox* m_extraWindow = nullptr;
    QTimeEdit* m_extraStart = nullptr;
    QTimeEdit* m_extraEnd = nullptr;
    QGroupBox* m_multiTimePane = nullptr;
    std::array<QTimeEdit*, 3> m_startTimes{};
    QSlider* m_extraHoursBar = nullptr;
    QLineEdit* m_extraHours = nullptr;
    QGroupBox* m_sixHoursPane = nullptr;
    std::array<QSpinBox*, 6> m_hours{};
    QSpinBox* m_hourTarget = nullptr;
    QSlider* m_sixHourBar = nullptr;
};
