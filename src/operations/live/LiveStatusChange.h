#pragma once

#include "protocol/PanelStatus.h"
#include "store/Message.h"

#include <QMetaType>

// A status frame pushed by a panel, as the window shows it: the door and line digits went into
// the roster's door status table; the message column says "Yangın" or "Dolu".
struct LiveStatusChange
{
    qint32 panelNumber = 0;
    // Roster position of the panel, 0 when the roster does not list it.
    int position = 0;
    PanelStatus status;

    // "Yangın" on a fire alarm, otherwise "Dolu" when a local zone is full, otherwise empty.
    Message message() const;
};

Q_DECLARE_METATYPE(LiveStatusChange)
