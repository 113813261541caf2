#include "ui/main/frmPassword.h"

#include "store/OperatorAccounts.h"
#include "store/OperatorSession.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmPassword::frmPassword(const OperatorAccounts& accounts, OperatorSession& session, const QString& userName,
                         QWidget* parent)
    : QDialog(parent)
    , m_accounts(accounts)
    , m_session(session)
{
    setObjectName(u"frmPassword"_s);
    setCaption(this, u"Sisteme Giriş"_s);
    m_session.beginLogin();

    auto* lblUserName = new QLabel(this);
    lblUserName->setObjectName(u"lblUserName"_s);
    setCaption(lblUserName, u"Kullanıcı Adı"_s);
    m_userName = new QLineEdit(userName, this);
    m_userName->setObjectName(u"txtUserName"_s);
    auto* lblPassword = new QLabel(this);
    lblPassword->setObjectName(u"lblPassword"_s);
    setCaption(lblPassword, u"Şifre"_s);
    m_password = new QLineEdit(this);
    m_password->setObjectName(u"txtPassword"_s);
    m_password->setEchoMode(QLineEdit::Password);

    auto* cmdOK = new QPushButton(this);
    cmdOK->setObjectName(u"cmdOK"_s);
    setCaption(cmdOK, u"Oturum Aç"_s);
    cmdOK->setDefault(true);
    auto* cmdCancel = new QPushButton(this);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    setCaption(cmdCancel, u"İptal"_s);

    auto* form = new QFormLayout;
    form->addRow(lblUserName, m_userName);
    form->addRow(lblPassword, m_password);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    setMinimumWidth(320);
    if (!userName.isEmpty())
        m_password->setFocus();

    connect(cmdOK, &QPushButton::clicked, this, &frmPassword::login);
    connect(cmdCancel, &QPushButton::clicked, this, &frmPassword::reject);
}

void frmPassword::login()
{
    const OperatorAccounts::LoginResult result = m_accounts.login(m_userName->text(), m_password->text());
    if (!result.succeeded()) {
        MessageBox::warning(this, result.message);
        m_password->selectAll();
        m_password->setFocus();
        return;
    }
    m_session.apply(result);
    accept();
}
