#pragma once

#include <QDialog>

class Database;
class OperatorAccounts;
class QButtonGroup;
class QLineEdit;
class QTabBar;

// The accounts dialog: changing the administrator password, and the ten operator accounts, one
// per tab. Every change needs the passwords the accounts' rules ask for; the dialog only
// gathers them and shows the answer.
class frmSetPassword : public QDialog
{
    Q_OBJECT

public:
    frmSetPassword(OperatorAccounts& accounts, Database& db, QWidget* parent = nullptr);

    // The account (1..10) the selected tab edits.
    int currentAccount() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void changeAdminPassword();
    void changePassword();
    void showAccount(int number);
    void captionTabs();

    OperatorAccounts& m_accounts;
    Database& m_db;
    QLineEdit* m_oldAdmin = nullptr;
    QLineEdit* m_newAdmin = nullptr;
    QLineEdit* m_newAdminAgain = nullptr;
    QTabBar* m_tabs = nullptr;
    QLineEdit* m_user = nullptr;
    QLineEdit* m_old = nullptr;
    QLineEdit* m_new = nullptr;
    QLineEdit* m_newAgain = nullptr;
    QButtonGroup* m_userType = nullptr;
    QLineEdit* m_adminPassword = nullptr;
};
