#include "ui/common/OptionGroupBox.h"

#include "ui/common/AllChoice.h"
#include "ui/common/Caption.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>
#include <QVBoxLayout>

OptionGroupBox::OptionGroupBox(const QString& objectName, const QString& title, const QString& prefix,
                               const QStringList& captions, QWidget* parent, const QString& allName,
                               const QString& allCaption)
    : QGroupBox(parent)
{
    setObjectName(objectName);
    setCaption(this, title);
    auto* layout = new QVBoxLayout(this);
    if (!allName.isEmpty()) {
        m_all = new QCheckBox(this);
        m_all->setObjectName(allName);
        setCaption(m_all, allCaption);
        m_all->setChecked(true);
        layout->addWidget(m_all);
        connect(m_all, &QCheckBox::toggled, this, &OptionGroupBox::changed);
    }
    m_group = new QButtonGroup(this);
    QList<QWidget*> controls;
    for (int index = 0; index < captions.size(); ++index) {
        auto* option = new QRadioButton(this);
        option->setObjectName(prefix + QString::number(index));
        setCaption(option, captions.at(index));
        m_group->addButton(option, index);
        layout->addWidget(option);
        m_options.append(option);
        controls.append(option);
    }
    if (!m_options.isEmpty())
        m_options.first()->setChecked(true);
    if (m_all)
        AllChoice::link(m_all, controls);
    layout->addStretch();
    connect(m_group, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (on)
            emit changed();
    });
}

int OptionGroupBox::chosen() const
{
    if (m_all && m_all->isChecked())
        return -1;
    return m_group->checkedId();
}

void OptionGroupBox::setChosen(int index)
{
    if (m_all)
        m_all->setChecked(false);
    if (index >= 0 && index < m_options.size())
        m_options.at(index)->setChecked(true);
}

void OptionGroupBox::setAll(bool all)
{
    if (m_all)
        m_all->setChecked(all);
}
