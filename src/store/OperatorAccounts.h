#pragma once

#include "store/Message.h"

#include <QList>
#include <QString>
#include <QVariant>

class Database;

// The administrator password and the ten operator accounts kept in the settings row, with the
// rules for logging in and for changing passwords. Passwords are whole numbers stored as numbers.
class OperatorAccounts
{
public:
    static constexpr int AccountCount = 10;

    struct Account
    {
        QString userName;
        QVariant password; // NULL while the account was never set
        int userType = 0; // 1 = administrator rights
        bool isAdministrator() const { return userType == 1; }
    };

    enum class LoginOutcome
    {
        Refused,
        Operator,
        Administrator
    };
    struct LoginResult
    {
        LoginOutcome outcome = LoginOutcome::Refused;
        int account = 0; // 1..10, 0 for the administrator name
        QString userName;
        Message message; // why it was refused; empty on success
        bool isAdministrator() const { return outcome == LoginOutcome::Administrator; }
        bool succeeded() const { return outcome != LoginOutcome::Refused; }
    };

    struct ChangeResult
    {
        bool ok = false;
        Message message; // shown in both cases
    };

    OperatorAccounts();

    bool load(const Database& db, QString* error = nullptr);
    // Writes the settings row (adding it when the table has none).
    bool save(Database& db, QString* error = nullptr) const;

    bool hasAdminPassword() const { return !m_adminPassword.isNull(); }
    QVariant adminPassword() const { return m_adminPassword; }
    void setAdminPassword(qint64 password) { m_adminPassword = password; }
    Account account(int number) const;
    void setAccount(int number, const Account& account);

    // The login dialog's rules; nothing is stored.
    LoginResult login(const QString& userName, const QString& password) const;

    // Changing the administrator password; on success the row is written.
    ChangeResult changeAdminPassword(Database& db, const QString& oldPassword, const QString& newPassword,
                                     const QString& repeated);
    // Changing account n (1..10); needs the administrator password too; on success the row is written.
    ChangeResult changeAccount(Database& db, int number, const QString& userName, const QString& oldPassword,
                               const QString& newPassword, const QString& repeated, int userType,
                               const QString& adminPassword);
    // Choosing the administrator password of a new database (entered twice); refused once one is set.
    ChangeResult setFirstAdminPassword(Database& db, const QString& password, const QString& repeated);

    // A password as typed: digits only (blanks around allowed), at most 18 of them.
    static bool isNumeric(const QString& text);
    static qint64 numericValue(const QString& text);

private:
    bool passwordEquals(const QVariant& stored, const QString& typed) const;

    QVariant m_adminPassword;
    QList<Account> m_accounts;
};
