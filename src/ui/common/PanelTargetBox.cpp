#include "ui/common/PanelTargetBox.h"

#include "ui/common/Caption.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>

using namespace Qt::StringLiterals;

PanelTargetBox::PanelTargetBox(const QString& name, QWidget* parent)
    : QGroupBox(parent)
{
    setObjectName(name + u"Box"_s);
    m_group = new QButtonGroup(this);
    m_group->setObjectName(name);
    m_group->setExclusive(true);

    auto* selected = new QRadioButton(this);
    selected->setObjectName(name + u"0"_s);
    setCaption(selected, u"Seçilen Panel"_s);
    auto* all = new QRadioButton(this);
    all->setObjectName(name + u"1"_s);
    setCaption(all, u"Tüm Paneller"_s);
    m_group->addButton(selected, 0);
    m_group->addButton(all, 1);
    selected->setChecked(true);

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(selected);
    layout->addWidget(all);
    layout->addStretch();
}

int PanelTargetBox::index() const
{
    return m_group->checkedId() == 1 ? 1 : 0;
}

void PanelTargetBox::setIndex(int index)
{
    if (QAbstractButton* button = m_group->button(index == 1 ? 1 : 0))
        button->setChecked(true);
}
