#pragma once

#include <QDialog>

class OperatorAccounts;
class OperatorSession;
class QLineEdit;

// The login dialog. Opening it withdraws the rights in force; a login that the accounts accept
// puts the operator's rights in force and closes it, a refused one says why and stays.
class frmPassword : public QDialog
{
    Q_OBJECT

public:
    frmPassword(const OperatorAccounts& accounts, OperatorSession& session, const QString& userName = QString(),
                QWidget* parent = nullptr);

private:
    void login();

    const OperatorAccounts& m_accounts;
    OperatorSession& m_session;
    QLineEdit* m_userName = nullptr;
    QLineEdit* m_password = nullptr;
};
