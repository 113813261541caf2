#pragma once

#include "store/OperatorAccounts.h"

#include <QDateTime>
#include <QMutex>
#include <QString>
#include <atomic>

class Clock;

// Who is logged in and whether administrator rights are in force. Rights last ten minutes of the
// station's clock after an administrator login and lapse the moment the clock reaches that
// limit; the person stays logged in after that. Read from any thread; changed by the window
// thread.
class OperatorSession
{
public:
    static constexpr int AdministratorSeconds = 600;

    explicit OperatorSession(const Clock& clock);

    bool isLoggedIn() const { return m_loggedIn.load(); }
    bool isAdministrator() const;
    // Whole seconds of administrator rights left (0 when none).
    int countdown() const;
    QString userName() const;

    // Opening the login dialog clears both flags.
    void beginLogin();
    // Takes the outcome of OperatorAccounts::login; a refused login changes nothing.
    void apply(const OperatorAccounts::LoginResult& result);
    void logInAsAdministrator(const QString& userName);
    void logInAsOperator(const QString& userName);
    void logOut();

    // The clock display's tick: withdraws rights whose time is over, so that they stay withdrawn
    // even when the clock is set back afterwards.
    void tick();

private:
    // Milliseconds of rights left at the clock's present reading; <= 0 when they are over.
    qint64 rightsLeftMs() const;

    const Clock& m_clock;
    std::atomic<bool> m_loggedIn{ false };
    std::atomic<bool> m_administrator{ false };
    mutable QMutex m_mutex;
    QString m_userName;
    QDateTime m_rightsFrom;
};
