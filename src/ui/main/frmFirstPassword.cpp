#include "ui/main/frmFirstPassword.h"

#include "store/Message.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmFirstPassword::frmFirstPassword(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(u"frmFirstPassword"_s);
    setCaption(this, u"Yönetici Şifresi"_s);

    m_hint = new QLabel(this);
    m_hint->setObjectName(u"lblHint"_s);
    m_hint->setWordWrap(true);
    setHint(Message(u"Yönetici şifresini belirleyiniz"_s));

    m_password = new QLineEdit(this);
    m_password->setObjectName(u"txtNewAdmin"_s);
    m_password->setEchoMode(QLineEdit::Password);
    m_repeated = new QLineEdit(this);
    m_repeated->setObjectName(u"txtNewRAdmin"_s);
    m_repeated->setEchoMode(QLineEdit::Password);
    auto* lblNew = new QLabel(this);
    lblNew->setObjectName(u"lblNewAdmin"_s);
    setCaption(lblNew, u"Yeni Yönetici Şifresi"_s);
    auto* lblRepeat = new QLabel(this);
    lblRepeat->setObjectName(u"lblNewRAdmin"_s);
    setCaption(lblRepeat, u"Yeni Yönetici Şifresi (Tekrar)"_s);

    auto* cmdOK = new QPushButton(this);
    cmdOK->setObjectName(u"cmdOK"_s);
    setCaption(cmdOK, u"Tamam"_s);
    cmdOK->setDefault(true);
    auto* cmdCancel = new QPushButton(this);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    setCaption(cmdCancel, u"İptal"_s);

    auto* form = new QFormLayout;
    form->addRow(lblNew, m_password);
    form->addRow(lblRepeat, m_repeated);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_hint);
    layout->addLayout(form);
    layout->addLayout(buttons);
    setMinimumWidth(380);

    connect(cmdOK, &QPushButton::clicked, this, &frmFirstPassword::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &frmFirstPassword::reject);
}

void frmFirstPassword::setHint(const Message& hint)
{
    m_hint->setText(Translate(hint));
    m_hint->setVisible(!hint.isEmpty());
}

QString frmFirstPassword::password() const
{
    return m_password->text();
}

QString frmFirstPassword::repeated() const
{
    return m_repeated->text();
}
