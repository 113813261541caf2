#pragma once

#include <QGroupBox>
#include <array>

class QCheckBox;

// The monthly plan "Aylık Plan": a box for each day of the month (chkMonFields0 for day 1 ..
// chkMonFields30 for day 31), with cmdSelectAll "Tümünü Seç" and cmdCancelAll "Tümünü İptal".
class MonthDaysBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit MonthDaysBox(QWidget* parent = nullptr);

    void setDays(const std::array<bool, 31>& days);
    std::array<bool, 31> days() const;

private:
    void checkAll(bool checked);

    std::array<QCheckBox*, 31> m_days{};
};
