#include "ui/configuration/MonthDaysBox.h"

#include "ui/common/Caption.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

MonthDaysBox::MonthDaysBox(QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"fraMonthPlan"_s);
    setCaption(this, u"Aylık Plan"_s);
    auto* grid = new QGridLayout(this);
    for (int day = 0; day < 31; ++day) {
        m_days[day] = new QCheckBox(QString::number(day + 1), this);
        m_days[day]->setObjectName(u"chkMonFields"_s + QString::number(day));
        grid->addWidget(m_days[day], day / 8, day % 8);
    }
    auto* selectAll = new QPushButton(this);
    selectAll->setObjectName(u"cmdSelectAll"_s);
    selectAll->setAutoDefault(false);
    setCaption(selectAll, u"Tümünü Seç"_s);
    auto* cancelAll = new QPushButton(this);
    cancelAll->setObjectName(u"cmdCancelAll"_s);
    cancelAll->setAutoDefault(false);
    setCaption(cancelAll, u"Tümünü İptal"_s);
    grid->addWidget(selectAll, 4, 0, 1, 4);
    grid->addWidget(cancelAll, 4, 4, 1, 4);
    connect(selectAll, &QPushButton::clicked, this, [this] { checkAll(true); });
    connect(cancelAll, &QPushButton::clicked, this, [this] { checkAll(false); });
}

void MonthDaysBox::setDays(const std::array<bool, 31>& days)
{
    for (int day = 0; day < 31; ++day)
        m_days[day]->setChecked(days[day]);
}

std::array<bool, 31> MonthDaysBox::days() const
{
    std::array<bool, 31> result{};
    for (int day = 0; day < 31; ++day)
        result[day] = m_days[day]->isChecked();
    return result;
}

void MonthDaysBox::checkAll(bool checked)
{
    for (QCheckBox* day : m_days)
        day->setChecked(checked);
}
