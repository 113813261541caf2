#pragma once

#include <QGroupBox>
#include <QTime>
#include <array>

class QCheckBox;
class QTimeEdit;

// The weekly plan of a time group: a box per weekday (chkWeekDay0 Monday .. chkWeekDay6 Sunday)
// and, when the type gives each day its own hours, that day's start and end (tmDayStart0..6,
// tmDayEnd0..6), open only while the day is chosen.
class WeekPlanBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit WeekPlanBox(QWidget* parent = nullptr);

    // With hours: the title "Haftalık Plan + Her Gün Ayrı Saat Sınırı" and the day windows;
    // without: "Haftalık Plan" and the days alone.
    void setShowHours(bool show);

    void setDays(const std::array<bool, 7>& days, const std::array<QTime, 7>& starts, const std::array<QTime, 7>& ends);
    std::array<bool, 7> days() const;
    std::array<QTime, 7> starts() const;
    std::array<QTime, 7> ends() const;

private:
    void enableHours();

    std::array<QCheckBox*, 7> m_days{};
    std::array<QTimeEdit*, 7> m_starts{};
    std::array<QTimeEdit*, 7> m_ends{};
    bool m_showHours = false;
};
