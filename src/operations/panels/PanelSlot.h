#pragma once

#include "protocol/PanelAddress.h"
#include "protocol/PanelSettingsRecord.h"

#include <QDateTime>
#include <QString>
#include <array>
#include <optional>

// One row of PanelSettings as the settings window and the command line edit it: the row key, the
// panel's identity, its settings record and the station-side door names.
struct PanelSlot
{
    qint32 order = 0; // "Sira No", the row key
    qint32 panelNumber = 0; // 1..64; 0 while the slot is empty
    quint16 serial = 0; // 0 while the slot is empty
    PanelSettingsRecord settings;
    std::array<QString, 4> doorNames;
    // Seconds the panel's clock was ahead of the station's when it was last read (negative:
    // behind); kept beside the settings, never sent.
    std::optional<qint32> clockOffset;
    QDateTime clockReadAt;

    // A slot is in use once it has a serial.
    bool inUse() const { return serial >= 1; }
    PanelAddress address() const;
    // "Kapi " + door number, the name a door has until it is named.
    static QString defaultDoorName(int door);
    // What removing the panel leaves in the slot: no number, serial, name or address, buttons and
    // anti-passback off, master relays 1 s, global zones 0, every door active with the default
    // name, relay choice, relay and input 1, odd doors entries and even doors exits. The other
    // settings stay as they were.
    void reset();

    bool operator==(const PanelSlot&) const = default;
};
