#pragma once

#include "store/StartupUi.h"

#include <QList>
#include <optional>

// The start-up's questions on the command line. Nothing is asked interactively: the set-up
// command hands in the settings record and the administrator password beforehand; any other
// command refuses the start-up dialog, so a folder that is not set up ends the start.
class CliStartupUi : public StartupUi
{
public:
    CliStartupUi() = default;

    // The record the start-up dialog confirms (set-up only).
    void setInitialSettings(const StationSettings& settings) { m_initial = settings; }
    bool bringsSettings() const { return m_initial.has_value(); }
    // The password chosen for a database that has none yet (set-up only).
    void setAdminPassword(const QString& password) { m_password = password; }

    bool askInitialSettings(StationSettings& settings) override;
    bool chooseAdminPassword(const Message& hint, QString* password, QString* repeated) override;
    void showMessage(const Message& message) override;

    // Messages the start showed, in order (printed by the caller in the chosen language).
    const QList<Message>& messages() const { return m_messages; }
    // Why the password was refused, when it was.
    Message passwordRefusal() const { return m_refusal; }

private:
    std::optional<StationSettings> m_initial;
    std::optional<QString> m_password;
    bool m_passwordOffered = false;
    Message m_refusal;
    QList<Message> m_messages;
};
