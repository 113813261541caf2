#include "store/OperatorSession.h"

QString OperatorSession::userName() const
{
    QMutexLocker lock(&m_mutex);
    return m_userName;
}

void OperatorSession::beginLogin()
{
    m_loggedIn = false;
    m_administrator = false;
}

void OperatorSession::apply(const OperatorAccounts::LoginResult& result)
{
    switch (result.outcome) {
    case OperatorAccounts::LoginOutcome::Administrator:
        logInAsAdministrator(result.userName);
        break;
    case OperatorAccounts::LoginOutcome::Operator:
        logInAsOperator(result.userName);
        break;
    case OperatorAccounts::LoginOutcome::Refused:
        break;
    }
}

void OperatorSession::logInAsAdministrator(const QString& userName)
{
    {
        QMutexLocker lock(&m_mutex);
        m_userName = userName;
    }
    m_countdown = AdministratorTicks;
    m_administrator = true;
    m_loggedIn = true;
}

void OperatorSession::logInAsOperator(const QString& userName)
{
    {
        QMutexLocker lock(&m_mutex);
        m_userName = userName;
    }
    m_countdown = 0;
    m_administrator = false;
    m_loggedIn = true;
}

void OperatorSession::logOut()
{
    m_countdown = 0;
    m_administrator = false;
    m_loggedIn = false;
    QMutexLocker lock(&m_mutex);
    m_userName.clear();
}

void OperatorSession::tick()
{
    int left = m_countdown.load();
    if (left > 0) {
        left = --m_countdown;
    }
    if (left <= 0)
        m_administrator = false;
}
