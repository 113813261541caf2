#pragma once

#include "protocol/PanelSettingsRecord.h"

// One panel's answer to the search broadcast: who it is and its settings.
struct SearchAnswer
{
    quint16 serial = 0;
    qint32 panelNumber = 0;
    PanelSettingsRecord settings;
};
