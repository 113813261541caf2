#include "ui/common/DateRangeBox.h"

#include "reports/ReportFilter.h"
#include "ui/common/Caption.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLabel>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

DateRangeBox::DateRangeBox(const QDate& today, QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"frDates"_s);
    setCaption(this, u"Tarih"_s);
    m_all = new QCheckBox(this);
    m_all->setObjectName(u"chkAllDates"_s);
    setCaption(m_all, u"Tüm Tarihler"_s);
    m_twoDates = new QCheckBox(this);
    m_twoDates->setObjectName(u"chkTwoDate"_s);
    setCaption(m_twoDates, u"İki Tarih Arası"_s);
    m_twoHours = new QCheckBox(this);
    m_twoHours->setObjectName(u"chkTwoHour"_s);
    setCaption(m_twoHours, u"Saat Aralığı"_s);

    auto dateEdit = [this](const QString& name) {
        auto* edit = new QDateEdit(this);
        edit->setObjectName(name);
        edit->setDisplayFormat(u"dd/MM/yyyy"_s);
        edit->setCalendarPopup(true);
        // Right to left, the edit would show the year first and the day last.
        edit->setLayoutDirection(Qt::LeftToRight);
        return edit;
    };
    auto timeEdit = [this](const QString& name, const QTime& time) {
        auto* edit = new QTimeEdit(this);
        edit->setObjectName(name);
        edit->setDisplayFormat(u"HH:mm:ss"_s);
        edit->setTime(time);
        // Right to left, the edit would show 23:59:59 as 59:59:23.
        edit->setLayoutDirection(Qt::LeftToRight);
        return edit;
    };
    m_start = dateEdit(u"dateStart"_s);
    m_end = dateEdit(u"dateEnd"_s);
    m_hourStart = timeEdit(u"dtHourStart"_s, QTime(0, 0, 0));
    m_hourEnd = timeEdit(u"dtHourEnd"_s, QTime(23, 59, 59));

    auto* lblStart = new QLabel(this);
    lblStart->setObjectName(u"lblStart"_s);
    setCaption(lblStart, u"Başlangıç"_s);
    auto* lblEnd = new QLabel(this);
    lblEnd->setObjectName(u"lblEnd"_s);
    setCaption(lblEnd, u"Bitiş"_s);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_all, 0, 0, 1, 3);
    layout->addWidget(m_twoDates, 1, 0, 1, 2);
    layout->addWidget(m_twoHours, 1, 2);
    layout->addWidget(lblStart, 2, 0);
    layout->addWidget(m_start, 2, 1);
    layout->addWidget(m_hourStart, 2, 2);
    layout->addWidget(lblEnd, 3, 0);
    layout->addWidget(m_end, 3, 1);
    layout->addWidget(m_hourEnd, 3, 2);

    setDay(today);
    for (QCheckBox* box : { m_all, m_twoDates, m_twoHours })
        connect(box, &QCheckBox::toggled, this, &DateRangeBox::updateEnabled);
    updateEnabled();
}

void DateRangeBox::setDay(const QDate& day)
{
    m_start->setDate(day);
    m_end->setDate(day);
}

void DateRangeBox::setAllDates(bool all)
{
    m_all->setChecked(all);
}

void DateRangeBox::updateEnabled()
{
    const bool dated = !m_all->isChecked();
    m_twoDates->setEnabled(dated);
    m_twoHours->setEnabled(dated);
    m_start->setEnabled(dated);
    m_end->setEnabled(dated && m_twoDates->isChecked());
    m_hourStart->setEnabled(dated && m_twoHours->isChecked());
    m_hourEnd->setEnabled(dated && m_twoHours->isChecked());
}

void DateRangeBox::fill(ReportFilter& filter) const
{
    filter.allDates = m_all->isChecked();
    filter.twoDates = m_twoDates->isChecked();
    filter.twoHours = m_twoHours->isChecked();
    filter.dateStart = m_start->date();
    filter.dateEnd = m_end->date();
    filter.hourStart = m_hourStart->time();
    filter.hourEnd = m_hourEnd->time();
}
