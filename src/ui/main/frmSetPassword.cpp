#include "ui/main/frmSetPassword.h"

#include "store/OperatorAccounts.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/MessageBox.h"

#include <QButtonGroup>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
QLineEdit* passwordEdit(QWidget* parent, const QString& name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setEchoMode(QLineEdit::Password);
    return edit;
}

QLabel* label(QWidget* parent, const QString& name)
{
    auto* l = new QLabel(parent);
    l->setObjectName(name);
    return l;
}

QPushButton* button(QWidget* parent, const QString& name)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    return b;
}

void showResult(QWidget* parent, const OperatorAccounts::ChangeResult& result)
{
    if (result.ok)
        MessageBox::information(parent, result.message);
    else
        MessageBox::warning(parent, result.message);
}
} // namespace

frmSetPassword::frmSetPassword(OperatorAccounts& accounts, Database& db, QWidget* parent)
    : QDialog(parent)
    , m_accounts(accounts)
    , m_db(db)
{
    setObjectName(u"frmSetPassword"_s);
    setCaption(this, u"Kullanıcı Hesapları"_s);

    auto* frAdmin = new QGroupBox(this);
    frAdmin->setObjectName(u"frAdmin"_s);
    setCaption(frAdmin, u"Yönetici Şifresi"_s);
    m_oldAdmin = passwordEdit(frAdmin, u"txtOldAdmin"_s);
    m_newAdmin = passwordEdit(frAdmin, u"txtNewAdmin"_s);
    m_newAdminAgain = passwordEdit(frAdmin, u"txtNewRAdmin"_s);
    QLabel* lblOldAdmin = label(frAdmin, u"lblOldAdmin"_s);
    setCaption(lblOldAdmin, u"Mevcut Şifre"_s);
    QLabel* lblNewAdmin = label(frAdmin, u"lblNewAdmin"_s);
    setCaption(lblNewAdmin, u"Yeni Şifre"_s);
    QLabel* lblNewRAdmin = label(frAdmin, u"lblNewRAdmin"_s);
    setCaption(lblNewRAdmin, u"Yeni Şifre (Tekrar)"_s);
    QPushButton* cmdChangeAdminPassword = button(frAdmin, u"cmdChangeAdminPassword"_s);
    setCaption(cmdChangeAdminPassword, u"Değiştir"_s);
    auto* adminForm = new QFormLayout(frAdmin);
    adminForm->addRow(lblOldAdmin, m_oldAdmin);
    adminForm->addRow(lblNewAdmin, m_newAdmin);
    adminForm->addRow(lblNewRAdmin, m_newAdminAgain);
    adminForm->addRow(QString(), cmdChangeAdminPassword);

    auto* frUsers = new QGroupBox(this);
    frUsers->setObjectName(u"frUsers"_s);
    m_tabs = new QTabBar(frUsers);
    m_tabs->setObjectName(u"TabUsers"_s);
    m_tabs->setExpanding(false);
    m_tabs->setUsesScrollButtons(true);
    for (int n = 1; n <= OperatorAccounts::AccountCount; ++n)
        m_tabs->addTab(QString());
    captionTabs();

    m_user = new QLineEdit(frUsers);
    m_user->setObjectName(u"txtUser"_s);
    m_old = passwordEdit(frUsers, u"txtOld"_s);
    m_new = passwordEdit(frUsers, u"txtNew"_s);
    m_newAgain = passwordEdit(frUsers, u"txtNewR"_s);
    m_adminPassword = passwordEdit(frUsers, u"txtAdminPassword"_s);
    m_userType = new QButtonGroup(this);
    m_userType->setObjectName(u"opsUserType"_s);
    auto* typeRow = new QHBoxLayout;
    for (int type = 0; type < 2; ++type) {
        auto* option = new QRadioButton(frUsers);
        option->setObjectName(u"opsUserType"_s + QString::number(type));
        m_userType->addButton(option, type);
        typeRow->addWidget(option);
    }
    typeRow->addStretch();
    setCaption(m_userType->button(0), u"Operatör"_s);
    setCaption(m_userType->button(1), u"Yönetici"_s);
    QLabel* lblUser = label(frUsers, u"lblUser"_s);
    setCaption(lblUser, u"Kullanıcı Adı"_s);
    QLabel* lblOld = label(frUsers, u"lblOld"_s);
    setCaption(lblOld, u"Mevcut Şifre"_s);
    QLabel* lblNew = label(frUsers, u"lblNew"_s);
    setCaption(lblNew, u"Yeni Şifre"_s);
    QLabel* lblNewR = label(frUsers, u"lblNewR"_s);
    setCaption(lblNewR, u"Yeni Şifre (Tekrar)"_s);
    QLabel* lblAdminPassword = label(frUsers, u"lblAdminPassword"_s);
    setCaption(lblAdminPassword, u"Yönetici Şifresi"_s);
    QPushButton* cmdChangePassword = button(frUsers, u"cmdChangePassword"_s);
    setCaption(cmdChangePassword, u"Değiştir"_s);
    auto* userForm = new QFormLayout;
    userForm->addRow(lblUser, m_user);
    userForm->addRow(QString(), typeRow);
    userForm->addRow(lblOld, m_old);
    userForm->addRow(lblNew, m_new);
    userForm->addRow(lblNewR, m_newAgain);
    userForm->addRow(lblAdminPassword, m_adminPassword);
    userForm->addRow(QString(), cmdChangePassword);
    auto* usersLayout = new QVBoxLayout(frUsers);
    usersLayout->addWidget(m_tabs);
    usersLayout->addLayout(userForm);

    QPushButton* cmdClose = button(this, u"cmdClose"_s);
    setCaption(cmdClose, u"Kapat"_s);
    auto* closeRow = new QHBoxLayout;
    closeRow->addStretch();
    closeRow->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frAdmin);
    layout->addWidget(frUsers);
    layout->addLayout(closeRow);
    setMinimumWidth(460);

    showAccount(1);
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) { showAccount(index + 1); });
    connect(cmdChangeAdminPassword, &QPushButton::clicked, this, &frmSetPassword::changeAdminPassword);
    connect(cmdChangePassword, &QPushButton::clicked, this, &frmSetPassword::changePassword);
    connect(cmdClose, &QPushButton::clicked, this, &frmSetPassword::accept);
}

int frmSetPassword::currentAccount() const
{
    return m_tabs->currentIndex() + 1;
}

void frmSetPassword::captionTabs()
{
    for (int index = 0; index < m_tabs->count(); ++index)
        m_tabs->setTabText(index, Translate(u"Kullanıcı"_s) + u' ' + QString::number(index + 1));
}

void frmSetPassword::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        captionTabs();
    QDialog::changeEvent(event);
}

void frmSetPassword::showAccount(int number)
{
    const OperatorAccounts::Account account = m_accounts.account(number);
    m_user->setText(account.userName.trimmed());
    m_userType->button(account.isAdministrator() ? 1 : 0)->setChecked(true);
    for (QLineEdit* edit : { m_old, m_new, m_newAgain, m_adminPassword })
        edit->clear();
}

void frmSetPassword::changeAdminPassword()
{
    const OperatorAccounts::ChangeResult result
        = m_accounts.changeAdminPassword(m_db, m_oldAdmin->text(), m_newAdmin->text(), m_newAdminAgain->text());
    showResult(this, result);
    if (result.ok) {
        for (QLineEdit* edit : { m_oldAdmin, m_newAdmin, m_newAdminAgain })
            edit->clear();
    }
}

void frmSetPassword::changePassword()
{
    const OperatorAccounts::ChangeResult result
        = m_accounts.changeAccount(m_db, currentAccount(), m_user->text(), m_old->text(), m_new->text(),
                                   m_newAgain->text(), m_userType->checkedId(), m_adminPassword->text());
    showResult(this, result);
    if (result.ok)
        showAccount(currentAccount());
}
