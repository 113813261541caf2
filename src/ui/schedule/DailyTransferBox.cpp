#include "ui/schedule/DailyTransferBox.h"

#include "store/ConfigFile.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"

#include <QCheckBox>
#include <QDebug>
#include <QGridLayout>
#include <QTimeEdit>

using namespace Qt::StringLiterals;

namespace {

QTimeEdit* timeEdit(const QString& name, QWidget* parent)
{
    auto* edit = new QTimeEdit(parent);
    edit->setObjectName(name);
    edit->setDisplayFormat(u"HH:mm:ss"_s);
    return edit;
}

} // namespace

DailyTransferBox::DailyTransferBox(const QString& configFile, const DailySchedule& initial, QWidget* parent)
    : QGroupBox(parent)
    , m_configFile(configFile)
{
    setObjectName(u"fraDailyTransfers"_s);
    setCaption(this, u"Günlük Otomatik İşlemler"_s);
    m_send = new QCheckBox(this);
    m_send->setObjectName(u"chkDailySendUser"_s);
    setCaption(m_send, u"Kullanıcıları her gün gönder"_s);
    m_sendTime = timeEdit(u"dtDailySendUserTime"_s, this);
    m_changedOnly = new QCheckBox(this);
    m_changedOnly->setObjectName(u"chkDailySendChangedOnly"_s);
    setCaption(m_changedOnly, u"Yalnızca değişen kullanıcıları gönder"_s);
    m_receive = new QCheckBox(this);
    m_receive->setObjectName(u"chkDailyReceiveLogs"_s);
    setCaption(m_receive, u"Offline kayıtları her gün al"_s);
    m_receiveTime = timeEdit(u"dtDailyReceiveLogsTime"_s, this);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_send, 0, 0);
    layout->addWidget(m_sendTime, 0, 1);
    layout->addWidget(m_changedOnly, 1, 0, 1, 2);
    layout->addWidget(m_receive, 2, 0);
    layout->addWidget(m_receiveTime, 2, 1);
    layout->setColumnStretch(0, 1);

    display(initial);
    // Only users sent daily can be narrowed to the changed ones.
    connect(m_send, &QCheckBox::toggled, m_changedOnly, &QWidget::setEnabled);
    connect(m_send, &QCheckBox::toggled, this, &DailyTransferBox::changed);
    connect(m_receive, &QCheckBox::toggled, this, &DailyTransferBox::changed);
    connect(m_sendTime, &QTimeEdit::timeChanged, this, &DailyTransferBox::changed);
    connect(m_receiveTime, &QTimeEdit::timeChanged, this, &DailyTransferBox::changed);
    connect(m_changedOnly, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            Q_EMIT changedOnlyChosen(on);
    });
}

bool DailyTransferBox::changedOnly() const
{
    return m_changedOnly->isChecked();
}

void DailyTransferBox::displayChangedOnly(bool changedOnly)
{
    m_showing = true;
    m_changedOnly->setChecked(changedOnly);
    m_showing = false;
}

DailySchedule DailyTransferBox::schedule() const
{
    return { m_send->isChecked(), m_sendTime->time(), m_receive->isChecked(), m_receiveTime->time() };
}

void DailyTransferBox::display(const DailySchedule& schedule)
{
    m_showing = true;
    m_send->setChecked(schedule.sendOn);
    m_changedOnly->setEnabled(schedule.sendOn);
    m_sendTime->setTime(schedule.sendTime.isValid() ? schedule.sendTime : QTime(0, 0));
    m_receive->setChecked(schedule.retrievalOn);
    m_receiveTime->setTime(schedule.retrievalTime.isValid() ? schedule.retrievalTime : QTime(0, 0));
    m_showing = false;
}

void DailyTransferBox::changed()
{
    if (m_showing)
        return;
    const DailySchedule wanted = schedule();
    QString error;
    if (!ConfigFile::update(
            m_configFile, [&wanted](StationSettings& settings) { wanted.applyTo(settings); }, nullptr, &error)) {
        qWarning().noquote() << m_configFile << error;
        MessageBox::warning(window(), Message(u"Başlangıç ayarları kaydedilemedi."_s));
    }
    // The schedule in force is what the person sees, written or not.
    Q_EMIT scheduleChanged(wanted);
}
