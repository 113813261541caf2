#include "ui/panels/ChoiceButtons.h"

#include "ui/common/Caption.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>
#include <algorithm>

ChoiceButtons::ChoiceButtons(const QString& name, const QList<PanelChoices::Choice>& choices, int columns,
                             QWidget* parent)
    : QWidget(parent)
    , m_columns(qMax(1, columns))
{
    setObjectName(name);
    m_group = new QButtonGroup(this);
    m_layout = new QGridLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    connect(m_group, &QButtonGroup::buttonClicked, this, [this](QAbstractButton* button) {
        const int index = static_cast<int>(m_buttons.indexOf(static_cast<QRadioButton*>(button)));
        if (index >= 0)
            Q_EMIT chosen(m_choices.at(index).code);
    });
    setChoices(choices);
}

void ChoiceButtons::setChoices(const QList<PanelChoices::Choice>& choices)
{
    const auto same = [](const PanelChoices::Choice& a, const PanelChoices::Choice& b) {
        return a.code == b.code && a.caption == b.caption;
    };
    if (!m_buttons.isEmpty() && std::equal(choices.begin(), choices.end(), m_choices.begin(), m_choices.end(), same))
        return;
    qDeleteAll(m_buttons);
    m_buttons.clear();
    m_choices = choices;
    for (int index = 0; index < choices.size(); ++index) {
        auto* button = new QRadioButton(this);
        button->setObjectName(objectName() + QString::number(index));
        setCaption(button, choices.at(index).caption);
        m_group->addButton(button);
        m_layout->addWidget(button, index / m_columns, index % m_columns);
        // Options made while the window is up must show at once, not after the next event.
        button->show();
        m_buttons.append(button);
    }
}

qint32 ChoiceButtons::value() const
{
    for (int index = 0; index < m_buttons.size(); ++index) {
        if (m_buttons.at(index)->isChecked())
            return m_choices.at(index).code;
    }
    return -1;
}

void ChoiceButtons::setValue(qint32 code)
{
    // Exclusive groups cannot be emptied by a click; switching it off for a moment can.
    m_group->setExclusive(false);
    for (int index = 0; index < m_buttons.size(); ++index)
        m_buttons.at(index)->setChecked(m_choices.at(index).code == code);
    m_group->setExclusive(true);
}

void ChoiceButtons::enableCodes(const QList<qint32>& codes)
{
    for (int index = 0; index < m_buttons.size(); ++index)
        m_buttons.at(index)->setEnabled(codes.contains(m_choices.at(index).code));
}
