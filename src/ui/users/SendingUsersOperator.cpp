#include "ui/users/SendingUsersOperator.h"

#include "ui/users/frmSendingUsersAllPanels.h"

SendingUsersOperator::SendingUsersOperator(frmSendingUsersAllPanels* window)
    : m_window(window)
{ }

bool SendingUsersOperator::ask(const Message&)
{
    return true;
}

void SendingUsersOperator::tell(const Message& message, Kind)
{
    if (m_window)
        m_window->setMessage(message);
}

void SendingUsersOperator::progress(int value, int maximum)
{
    if (m_window)
        m_window->setProgress(value, maximum);
}

void SendingUsersOperator::status(const Message& line)
{
    if (m_window)
        m_window->setMessage(line);
}

void SendingUsersOperator::requestLogin() { }

bool SendingUsersOperator::cancelRequested() const
{
    return m_window && m_window->cancelRequested();
}
