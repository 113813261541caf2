#include "CliStartupUi.h"

bool CliStartupUi::askInitialSettings(StationSettings& settings)
{
    if (!m_initial)
        return false;
    settings = *m_initial;
    return true;
}

bool CliStartupUi::chooseAdminPassword(const Message& hint, QString* password, QString* repeated)
{
    // The password is offered once; when the start asks again its hint says why it was refused.
    if (m_passwordOffered) {
        m_refusal = hint;
        return false;
    }
    if (!m_password)
        return false;
    m_passwordOffered = true;
    *password = *m_password;
    *repeated = *m_password;
    return true;
}

void CliStartupUi::showMessage(const Message& message)
{
    m_messages.append(message);
}
