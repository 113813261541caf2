#pragma once

#include "store/StartupUi.h"

// The start-up without a person: no dialog is shown, so a folder that is not set up, or a
// database without an administrator password, ends the start; messages go to the log.
class ServiceStartupUi : public StartupUi
{
public:
    bool askInitialSettings(StationSettings& settings) override;
    bool chooseAdminPassword(const Message& hint, QString* password, QString* repeated) override;
    void showMessage(const Message& message) override;
};
