#pragma once

#include "store/OperatorAccounts.h"

#include <QMutex>
#include <QString>
#include <atomic>

// Who is logged in and whether administrator rights are in force. Rights last 600 ticks of the
// one-second clock after an administrator login; the person stays logged in after that.
// Read from any thread; changed by the window thread.
class OperatorSession
{
public:
    static constexpr int AdministratorTicks = 600;

    OperatorSession() = default;

    bool isLoggedIn() const { return m_loggedIn.load(); }
    bool isAdministrator() const { return m_administrator.load(); }
    int countdown() const { return m_countdown.load(); }
    QString userName() const;

    // Opening the login dialog clears both flags.
    void beginLogin();
    // Takes the outcome of OperatorAccounts::login; a refused login changes nothing.
    void apply(const OperatorAccounts::LoginResult& result);
    void logInAsAdministrator(const QString& userName);
    void logInAsOperator(const QString& userName);
    void logOut();

    // One second of the clock: counts the rights down and withdraws them at 0.
    void tick();

private:
    std::atomic<bool> m_loggedIn{ false };
    std::atomic<bool> m_administrator{ false };
    std::atomic<int> m_countdown{ 0 };
    mutable QMutex m_mutex;
    QString m_userName;
};
