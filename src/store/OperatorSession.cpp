#include "store/OperatorSession.h"

#include "store/Clock.h"

OperatorSession::OperatorSession(const Clock& clock)
    : m_clock(clock)
{ }

QString OperatorSession::userName() const
{
    QMutexLocker lock(&m_mutex);
    return m_userName;
}

qint64 OperatorSession::rightsLeftMs() const
{
    QDateTime from;
    {
        QMutexLocker lock(&m_mutex);
        from = m_rightsFrom;
    }
    if (!from.isValid())
        return 0;
    const qint64 since = from.msecsTo(m_clock.now());
    // A clock set back before the login ends the rights rather than stretching them.
    if (since < 0)
        return 0;
    return qint64(AdministratorSeconds) * 1000 - since;
}

bool OperatorSession::isAdministrator() const
{
    return m_administrator.load() && rightsLeftMs() > 0;
}

int OperatorSession::countdown() const
{
    if (!m_administrator.load())
        return 0;
    const qint64 left = rightsLeftMs();
    return left > 0 ? int((left + 999) / 1000) : 0;
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
    const QDateTime now = m_clock.now();
    {
        QMutexLocker lock(&m_mutex);
        m_userName = userName;
        m_rightsFrom = now;
    }
    m_administrator = true;
    m_loggedIn = true;
}

void OperatorSession::logInAsOperator(const QString& userName)
{
    {
        QMutexLocker lock(&m_mutex);
        m_userName = userName;
        m_rightsFrom = QDateTime();
    }
    m_administrator = false;
    m_loggedIn = true;
}

void OperatorSession::logOut()
{
    m_administrator = false;
    m_loggedIn = false;
    QMutexLocker lock(&m_mutex);
    m_userName.clear();
    m_rightsFrom = QDateTime();
}

void OperatorSession::tick()
{
    if (m_administrator.load() && rightsLeftMs() <= 0)
        m_administrator = false;
}
