#include "ui/common/ZoneChoiceBox.h"

#include "operations/configuration/ZoneRepository.h"
#include "reports/ReportFilter.h"
#include "reports/ZoneDoors.h"
#include "store/Translate.h"
#include "ui/common/AllChoice.h"
#include "ui/common/Caption.h"
#include "ui/reports/ReportContext.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ZoneChoiceBox::ZoneChoiceBox(QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"frZones"_s);
    setCaption(this, u"Global Bölge"_s);
    m_all = new QCheckBox(this);
    m_all->setObjectName(u"chkAllZones"_s);
    setCaption(m_all, u"Tüm Bölgeler"_s);
    m_all->setChecked(true);
    m_zones = new QComboBox(this);
    m_zones->setObjectName(u"cmbZones"_s);
    m_info = new QLabel(this);
    m_info->setObjectName(u"lblZoneInfo"_s);
    m_info->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_all);
    layout->addWidget(m_zones);
    layout->addWidget(m_info);
    AllChoice::link(m_all, { m_zones });
    connect(m_all, &QCheckBox::toggled, this, &ZoneChoiceBox::showInfo);
    connect(m_zones, &QComboBox::currentIndexChanged, this, &ZoneChoiceBox::showInfo);
}

void ZoneChoiceBox::reload(const Database& db, const ReportContext& context)
{
    m_db = &db;
    m_client = context.clientStation;
    m_watched = context.watchedPanels;
    const int chosen = m_zones->currentData().toInt();
    QSignalBlocker block(m_zones);
    m_zones->clear();
    QString error;
    const QList<ZoneRepository::Row> zones = ZoneRepository(db).list(&error);
    if (!error.isEmpty())
        qWarning().noquote() << "zone list:" << error;
    for (const ZoneRepository::Row& zone : zones) {
        if (zone.number > 0)
            m_zones->addItem(zone.name, zone.number);
    }
    const int index = m_zones->findData(chosen);
    m_zones->setCurrentIndex(index >= 0 ? index : 0);
    showInfo();
}

void ZoneChoiceBox::fill(ReportFilter& filter) const
{
    filter.zone = m_all->isChecked() ? 0 : m_zones->currentData().toInt();
}

bool ZoneChoiceBox::choose(int zone)
{
    const int index = m_zones->findData(zone);
    if (index < 0)
        return false;
    m_all->setChecked(false);
    m_zones->setCurrentIndex(index);
    return true;
}

void ZoneChoiceBox::showInfo()
{
    const int zone = m_zones->currentData().toInt();
    if (m_all->isChecked() || zone <= 0 || !m_db) {
        setCaption(m_info, QString());
        return;
    }
    const ZoneDoors doors = ZoneDoors::load(*m_db, zone, m_client ? &m_watched : nullptr);
    if (doors.isEmpty()) {
        setCaption(m_info, u"Bu bölgede kapı yok"_s);
        return;
    }
    // "Panel 1: 1, 2  Panel 3: 1, 2, 3, 4"
    QStringList parts;
    for (auto it = doors.doors().cbegin(); it != doors.doors().cend(); ++it) {
        QStringList numbers;
        for (int door : it.value())
            numbers.append(QString::number(door));
        parts.append(Translate(u"Panel"_s) + u' ' + QString::number(it.key()) + u": "_s + numbers.join(u", "_s));
    }
    setCaption(m_info, QString(), parts.join(u"   "_s));
}
