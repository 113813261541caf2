#include "ui/configuration/frmTimeGroupSettings.h"

#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/configuration/MonthDaysBox.h"
#include "ui/configuration/WeekPlanBox.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTimeEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
const QString kDateForm = u"dd/MM/yyyy"_s;

QLabel* label(QWidget* parent, const QString& turkish, const QString& name = {})
{
    auto* l = new QLabel(parent);
    if (!name.isEmpty())
        l->setObjectName(name);
    setCaption(l, turkish);
    return l;
}

QGroupBox* pane(QWidget* parent, const QString& name, const QString& turkish)
{
    auto* box = new QGroupBox(parent);
    box->setObjectName(name);
    setCaption(box, turkish);
    return box;
}

QTimeEdit* timeEdit(QWidget* parent, const QString& name)
{
    auto* edit = new QTimeEdit(parent);
    edit->setObjectName(name);
    // Times read left to right in every language (a right-to-left edit shows 08:00 as 00:08).
    edit->setLayoutDirection(Qt::LeftToRight);
    edit->setDisplayFormat(u"HH:mm"_s);
    return edit;
}

QLineEdit* shownField(QWidget* parent, const QString& name)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    return field;
}

QTime timeOrMidnight(const QTime& time)
{
    return time.isValid() ? time : QTime(0, 0);
}

// The pickers write the day they show into the field beside them.
void followPicker(QDateEdit* picker, QLineEdit* field)
{
    QObject::connect(picker, &QDateEdit::dateChanged, field,
                     [field](const QDate& date) { field->setText(date.toString(kDateForm)); });
}
} // namespace

frmTimeGroupSettings::frmTimeGroupSettings(const TimeGroupRow& row, const QString& typeName, const QDate& today,
                                           QWidget* parent)
    : QDialog(parent)
    , m_row(row)
{
    setObjectName(u"frmTimeGroupSettings"_s);
    setCaption(this, u"Zaman Bölge Tipi Ayarları"_s);

    m_type = new QLabel(this);
    m_type->setObjectName(u"lblTimeGroupType"_s);
    m_type->setText(Translate(typeName.trimmed()));
    QFont bold = m_type->font();
    bold.setBold(true);
    m_type->setFont(bold);
    m_noRestriction = label(this, u"Sınırlama Yok"_s, u"lblNoRestriction"_s);
    m_weekPlan = new WeekPlanBox(this);
    m_monthPlan = new MonthDaysBox(this);

    auto* ok = new QPushButton(this);
    ok->setObjectName(u"cmdOK"_s);
    setCaption(ok, u"Tamam"_s);
    auto* cancel = new QPushButton(this);
    cancel->setObjectName(u"cmdCancel"_s);
    setCaption(cancel, u"İptal"_s);
    ok->setAutoDefault(false);
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_type);
    layout->addWidget(m_noRestriction);
    layout->addWidget(datesPane(today));
    layout->addWidget(hoursPane());
    layout->addWidget(m_weekPlan);
    layout->addWidget(m_monthPlan);
    layout->addWidget(extraWindowPane());
    layout->addWidget(multiTimePane());
    layout->addWidget(sixHoursPane());
    layout->addStretch();
    layout->addLayout(buttons);

    fill();
    showPanes(row.record.restrictionType);
}

QGroupBox* frmTimeGroupSettings::datesPane(const QDate& today)
{
    m_datesPane = pane(this, u"fraTwoDates"_s, u"İki Tarih Arası"_s);
    m_startDate = shownField(m_datesPane, u"txtStartDate"_s);
    m_endDate = shownField(m_datesPane, u"txtEndDate"_s);
    m_startPicker = new QDateEdit(m_datesPane);
    m_startPicker->setObjectName(u"dtStart"_s);
    m_endPicker = new QDateEdit(m_datesPane);
    m_endPicker->setObjectName(u"dtEnd"_s);
    for (QDateEdit* picker : { m_startPicker, m_endPicker }) {
        picker->setCalendarPopup(true);
        picker->setLayoutDirection(Qt::LeftToRight);
        picker->setDisplayFormat(kDateForm);
        picker->setDate(today);
    }
    auto* grid = new QGridLayout(m_datesPane);
    grid->addWidget(label(m_datesPane, u"Başlangıç Tarihi"_s), 0, 0);
    grid->addWidget(m_startDate, 0, 1);
    grid->addWidget(m_startPicker, 0, 2);
    grid->addWidget(label(m_datesPane, u"Bitiş Tarihi"_s), 1, 0);
    grid->addWidget(m_endDate, 1, 1);
    grid->addWidget(m_endPicker, 1, 2);
    return m_datesPane;
}

QGroupBox* frmTimeGroupSettings::hoursPane()
{
    m_hoursPane = pane(this, u"fraTwoHours"_s, u"İki Saat Arası"_s);
    m_startTime = timeEdit(m_hoursPane, u"tmStartTime"_s);
    m_endTime = timeEdit(m_hoursPane, u"tmEndTime"_s);
    auto* grid = new QGridLayout(m_hoursPane);
    grid->addWidget(label(m_hoursPane, u"Başlangıç Saati"_s), 0, 0);
    grid->addWidget(m_startTime, 0, 1);
    grid->addWidget(label(m_hoursPane, u"Bitiş Saati"_s), 1, 0);
    grid->addWidget(m_endTime, 1, 1);
    return m_hoursPane;
}

QGroupBox* frmTimeGroupSettings::extraWindowPane()
{
    m_extraPane = pane(this, u"fraExtraHours"_s, u"İlave Saat Kontrolü (Her Gün İçin Geçerli)"_s);
    m_extraWindow = new QCheckBox(m_extraPane);
    m_extraWindow->setObjectName(u"chkExtraWindow"_s);
    setCaption(m_extraWindow, u"İlave Saat Kontrolü"_s);
    m_extraStart = timeEdit(m_extraPane, u"tmExtraStart"_s);
    m_extraEnd = timeEdit(m_extraPane, u"tmExtraEnd"_s);
    auto* grid = new QGridLayout(m_extraPane);
    grid->addWidget(m_extraWindow, 0, 0, 1, 2);
    grid->addWidget(label(m_extraPane, u"Başlangıç Saati"_s), 1, 0);
    grid->addWidget(m_extraStart, 1, 1);
    grid->addWidget(label(m_extraPane, u"Bitiş Saati"_s), 2, 0);
    grid->addWidget(m_extraEnd, 2, 1);
    const auto enable = [this](bool on) {
        m_extraStart->setEnabled(on);
        m_extraEnd->setEnabled(on);
    };
    connect(m_extraWindow, &QCheckBox::toggled, this, enable);
    enable(false);
    return m_extraPane;
}

QGroupBox* frmTimeGroupSettings::multiTimePane()
{
    m_multiTimePane = pane(this, u"fraMultiTime"_s, u"Çoklu Saat Modu"_s);
    auto* grid = new QGridLayout(m_multiTimePane);
    for (int i = 0; i < 3; ++i) {
        m_startTimes[i] = timeEdit(m_multiTimePane, u"txtStartTime"_s + QString::number(i));
        grid->addWidget(m_startTimes[i], 0, i);
    }
    auto* note = label(m_multiTimePane, u"(Yukardaki 3 farklı zaman bilgisi ss:dd formatında girilecektir)"_s);
    note->setWordWrap(true);
    grid->addWidget(note, 1, 0, 1, 3);
    m_extraHoursBar = new QSlider(Qt::Horizontal, m_multiTimePane);
    m_extraHoursBar->setObjectName(u"TBarHInsert"_s);
    m_extraHoursBar->setRange(1, 8);
    m_extraHoursBar->setTickPosition(QSlider::TicksBelow);
    m_extraHours = shownField(m_multiTimePane, u"txtExtraHours"_s);
    grid->addWidget(label(m_multiTimePane, u"Ek Saat (1-8 Saat Arası):"_s), 2, 0);
    grid->addWidget(m_extraHoursBar, 2, 1);
    grid->addWidget(m_extraHours, 2, 2);
    connect(m_extraHoursBar, &QSlider::valueChanged, m_extraHours,
            [this](int hours) { m_extraHours->setText(QString::number(hours)); });
    return m_multiTimePane;
}

QGroupBox* frmTimeGroupSettings::sixHoursPane()
{
    m_sixHoursPane = pane(this, u"fraSixHours"_s, u"Çoklu Saat Modu (6'lı Saat)"_s);
    auto* grid = new QGridLayout(m_sixHoursPane);
    for (int i = 0; i < 6; ++i) {
        m_hours[i] = new QSpinBox(m_sixHoursPane);
        m_hours[i]->setObjectName(u"txtSixHour"_s + QString::number(i));
        m_hours[i]->setRange(0, 23);
        m_hours[i]->installEventFilter(this);
        grid->addWidget(m_hours[i], 0, i);
    }
    m_hourTarget = m_hours[0];
    auto* note = label(m_sixHoursPane, u"(Yukardaki 6 farklı zaman bilgisi 1-24 arası saat olarak girilecektir)"_s);
    note->setWordWrap(true);
    grid->addWidget(note, 1, 0, 1, 6);
    m_sixHourBar = new QSlider(Qt::Horizontal, m_sixHoursPane);
    m_sixHourBar->setObjectName(u"TBarInsertSixHour"_s);
    m_sixHourBar->setRange(0, 23);
    m_sixHourBar->setTickPosition(QSlider::TicksBelow);
    grid->addWidget(m_sixHourBar, 2, 0, 1, 6);
    connect(m_sixHourBar, &QSlider::valueChanged, this, [this](int hour) { m_hourTarget->setValue(hour); });
    return m_sixHoursPane;
}

bool frmTimeGroupSettings::eventFilter(QObject* watched, QEvent* event)
{
    // The six-hour track bar writes into the hour field entered last.
    if (event->type() == QEvent::FocusIn) {
        for (QSpinBox* hour : m_hours) {
            if (watched == hour) {
                m_hourTarget = hour;
                m_sixHourBar->blockSignals(true);
                m_sixHourBar->setValue(hour->value());
                m_sixHourBar->blockSignals(false);
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmTimeGroupSettings::fill()
{
    const TimeGroupRecord& t = m_row.record;
    if (t.startDate.isValid())
        m_startPicker->setDate(t.startDate);
    if (t.endDate.isValid())
        m_endPicker->setDate(t.endDate);
    // The fields show what is stored: blank until a day is picked.
    m_startDate->setText(t.startDate.isValid() ? t.startDate.toString(kDateForm) : QString());
    m_endDate->setText(t.endDate.isValid() ? t.endDate.toString(kDateForm) : QString());
    followPicker(m_startPicker, m_startDate);
    followPicker(m_endPicker, m_endDate);

    m_startTime->setTime(timeOrMidnight(t.startTime));
    m_endTime->setTime(timeOrMidnight(t.endTime));
    m_weekPlan->setDays(t.weekdays, t.weekdayStart, t.weekdayEnd);
    m_monthPlan->setDays(t.monthDays);
    m_extraWindow->setChecked(t.extraWindow);
    m_extraStart->setTime(timeOrMidnight(t.extraStart));
    m_extraEnd->setTime(timeOrMidnight(t.extraEnd));
    for (int i = 0; i < 3; ++i)
        m_startTimes[i]->setTime(timeOrMidnight(t.startTimes[i]));
    m_extraHoursBar->setValue(qBound(1, t.extraHours, 8));
    m_extraHours->setText(QString::number(m_extraHoursBar->value()));
    for (int i = 0; i < 6; ++i)
        m_hours[i]->setValue(qBound(0, t.hours[i], 23));
    m_sixHourBar->setValue(m_hours[0]->value());
}

void frmTimeGroupSettings::showPanes(int type)
{
    const bool weekly = type == 5 || type == 6 || type == 9 || type == 13;
    m_datesPane->setVisible(type == 1 || type == 2);
    m_hoursPane->setVisible(type == 3 || type == 4);
    m_weekPlan->setVisible(weekly);
    m_weekPlan->setShowHours(type == 6 || type == 13);
    m_monthPlan->setVisible(type == 8);
    m_extraPane->setVisible(type == 9 || type == 13);
    m_multiTimePane->setVisible(type == 10);
    m_sixHoursPane->setVisible(type == 11 || type == 12);
    const bool hasFields = (type >= 1 && type <= 6) || (type >= 8 && type <= 13);
    m_noRestriction->setVisible(!hasFields);
    adjustSize();
}

TimeGroupRow frmTimeGroupSettings::row() const
{
    TimeGroupRow result = m_row;
    TimeGroupRecord& t = result.record;
    t.startDate = QDate::fromString(m_startDate->text(), kDateForm);
    t.endDate = QDate::fromString(m_endDate->text(), kDateForm);
    t.startTime = m_startTime->time();
    t.endTime = m_endTime->time();
    t.weekdays = m_weekPlan->days();
    t.weekdayStart = m_weekPlan->starts();
    t.weekdayEnd = m_weekPlan->ends();
    t.monthDays = m_monthPlan->days();
    t.extraWindow = m_extraWindow->isChecked();
    t.extraStart = m_extraStart->time();
    t.extraEnd = m_extraEnd->time();
    for (int i = 0; i < 3; ++i)
        t.startTimes[i] = m_startTimes[i]->time();
    t.extraHours = m_extraHoursBar->value();
    for (int i = 0; i < 6; ++i)
        t.hours[i] = m_hours[i]->value();
    return result;
}
