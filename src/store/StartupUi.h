#pragma once

#include "store/Message.h"
#include "store/StationSettings.h"

#include <QString>

// What the start-up needs from the person: the windows implement it, tests script it.
class StartupUi
{
public:
    virtual ~StartupUi() = default;

    // Shows the start-up dialog over the given record. Returns true with the record filled in
    // (StationSettings::applyStartChoices does the checks) when confirmed, false when cancelled.
    // The start-up writes the record; the dialog does not.
    virtual bool askInitialSettings(StationSettings& settings) = 0;

    // Asks for a new administrator password, typed twice. Returns false when cancelled. The
    // start-up checks the two entries and asks again with a hint when they are refused.
    virtual bool chooseAdminPassword(const Message& hint, QString* password, QString* repeated) = 0;

    // Shows a message; start-up failures end the program after it.
    virtual void showMessage(const Message& message) = 0;
};
