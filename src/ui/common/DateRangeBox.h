#pragma once

#include <QGroupBox>

class QCheckBox;
class QDate;
class QDateEdit;
class QTimeEdit;
struct ReportFilter;

// Dates and hours of a passage report: chkAllDates; otherwise the day dateStart, or with
// chkTwoDate the days dateStart to dateEnd; whole days, or with chkTwoHour from dtHourStart to
// dtHourEnd.
class DateRangeBox : public QGroupBox
{
    Q_OBJECT

public:
    // today: the day the box starts on (the station clock's date when the window opens).
    explicit DateRangeBox(const QDate& today, QWidget* parent = nullptr);

    void fill(ReportFilter& filter) const;
    // Starts on a given day (today when the window opens).
    void setDay(const QDate& day);
    void setAllDates(bool all);

private:
    void updateEnabled();

    QCheckBox* m_all = nullptr;
    QCheckBox* m_twoDates = nullptr;
    QCheckBox* m_twoHours = nullptr;
    QDateEdit* m_start = nullptr;
    QDateEdit* m_end = nullptr;
    QTimeEdit* m_hourStart = nullptr;
    QTimeEdit* m_hourEnd = nullptr;
};
