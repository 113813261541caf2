#include "ui/common/DoorChoiceBox.h"

#include "reports/ReportFilter.h"
#include "ui/common/AllChoice.h"
#include "ui/common/Caption.h"

#include <QCheckBox>
#include <QGridLayout>

using namespace Qt::StringLiterals;

DoorChoiceBox::DoorChoiceBox(QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(u"frReaders"_s);
    setCaption(this, u"Kapılar"_s);
    m_all = new QCheckBox(this);
    m_all->setObjectName(u"chkAllReaders"_s);
    setCaption(m_all, u"Tüm Kapılar"_s);
    m_all->setChecked(true);
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_all, 0, 0, 1, 2);
    QList<QWidget*> controls;
    for (int index = 0; index < 4; ++index) {
        auto* door = new QCheckBox(this);
        door->setObjectName(u"chkReaders"_s + QString::number(index));
        setCaption(door, u"Kapı"_s, u" "_s + QString::number(index + 1));
        layout->addWidget(door, 1 + index / 2, index % 2);
        m_doors.append(door);
        controls.append(door);
    }
    AllChoice::link(m_all, controls);
}

void DoorChoiceBox::fill(ReportFilter& filter) const
{
    filter.allDoors = m_all->isChecked();
    filter.doors.clear();
    if (filter.allDoors)
        return;
    for (int index = 0; index < m_doors.size(); ++index) {
        if (m_doors.at(index)->isChecked())
            filter.doors.append(index + 1);
    }
}
