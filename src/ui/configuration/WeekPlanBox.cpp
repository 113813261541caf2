#include "ui/configuration/WeekPlanBox.h"

#include "ui/common/Caption.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

namespace {
QTimeEdit* timeEdit(QWidget* parent, const QString& name)
{
    auto* edit = new QTimeEdit(parent);
    edit->setObjectName(name);
    // Times read left to right in every language (a right-to-left edit shows 08:00 as 00:08).
    edit->setLayoutDirection(Qt::LeftToRight);
    edit->setDisplayFormat(u"HH:mm"_s);
    return edit;
}
} // namespace

WeekPlanBox::WeekPlanBox(QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"fraWeekPlan"_s);
    const QStringList names
        = { u"Pazartesi"_s, u"Salı"_s, u"Çarşamba"_s, u"Perşembe"_s, u"Cuma"_s, u"Cumartesi"_s, u"Pazar"_s };
    auto* grid = new QGridLayout(this);
    for (int day = 0; day < 7; ++day) {
        const QString index = QString::number(day);
        m_days[day] = new QCheckBox(this);
        m_days[day]->setObjectName(u"chkWeekDay"_s + index);
        setCaption(m_days[day], names.at(day));
        m_starts[day] = timeEdit(this, u"tmDayStart"_s + index);
        m_ends[day] = timeEdit(this, u"tmDayEnd"_s + index);
        grid->addWidget(m_days[day], day, 0);
        grid->addWidget(m_starts[day], day, 1);
        grid->addWidget(m_ends[day], day, 2);
        connect(m_days[day], &QCheckBox::toggled, this, &WeekPlanBox::enableHours);
    }
    setShowHours(false);
}

void WeekPlanBox::setShowHours(bool show)
{
    m_showHours = show;
    setCaption(this, show ? u"Haftalık Plan + Her Gün Ayrı Saat Sınırı"_s : u"Haftalık Plan"_s);
    for (int day = 0; day < 7; ++day) {
        m_starts[day]->setVisible(show);
        m_ends[day]->setVisible(show);
    }
    enableHours();
}

void WeekPlanBox::setDays(const std::array<bool, 7>& days, const std::array<QTime, 7>& starts,
                          const std::array<QTime, 7>& ends)
{
    for (int day = 0; day < 7; ++day) {
        m_days[day]->setChecked(days[day]);
        m_starts[day]->setTime(starts[day].isValid() ? starts[day] : QTime(8, 0));
        m_ends[day]->setTime(ends[day].isValid() ? ends[day] : QTime(18, 0));
    }
    enableHours();
}

std::array<bool, 7> WeekPlanBox::days() const
{
    std::array<bool, 7> result{};
    for (int day = 0; day < 7; ++day)
        result[day] = m_days[day]->isChecked();
    return result;
}

std::array<QTime, 7> WeekPlanBox::starts() const
{
    std::array<QTime, 7> result{};
    for (int day = 0; day < 7; ++day)
        result[day] = m_starts[day]->time();
    return result;
}

std::array<QTime, 7> WeekPlanBox::ends() const
{
    std::array<QTime, 7> result{};
    for (int day = 0; day < 7; ++day)
        result[day] = m_ends[day]->time();
    return result;
}

void WeekPlanBox::enableHours()
{
    for (int day = 0; day < 7; ++day) {
        m_starts[day]->setEnabled(m_days[day]->isChecked());
        m_ends[day]->setEnabled(m_days[day]->isChecked());
    }
}
