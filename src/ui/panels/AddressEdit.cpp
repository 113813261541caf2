#include "ui/panels/AddressEdit.h"

#include "ui/panels/SelectOnFocus.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

AddressEdit::AddressEdit(const QString& name, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(name + u"Row"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    // An address reads left to right in every language.
    setLayoutDirection(Qt::LeftToRight);
    for (int i = 0; i < 4; ++i) {
        if (i > 0)
            layout->addWidget(new QLabel(u"."_s, this));
        auto* edit = new QLineEdit(this);
        edit->setObjectName(name + QString::number(i));
        edit->setValidator(new QIntValidator(0, 255, edit));
        edit->setMaxLength(3);
        edit->setMaximumWidth(44);
        SelectOnFocus::install(edit);
        layout->addWidget(edit);
        m_fields.append(edit);
    }
    layout->addStretch();
}

std::array<qint32, 4> AddressEdit::octets() const
{
    std::array<qint32, 4> result{};
    for (int i = 0; i < 4; ++i)
        result[i] = qBound(0, m_fields.at(i)->text().toInt(), 255);
    return result;
}

void AddressEdit::setOctets(const std::array<qint32, 4>& octets)
{
    for (int i = 0; i < 4; ++i)
        m_fields.at(i)->setText(QString::number(octets[i]));
}

void AddressEdit::clear()
{
    for (QLineEdit* field : std::as_const(m_fields))
        field->clear();
}
