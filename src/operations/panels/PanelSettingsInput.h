#pragma once

#include "operations/panels/PanelSlot.h"
#include "store/Message.h"

#include <QString>
#include <array>

// What the person typed into the settings of one panel, before the checks of a save: the fields
// that are refused or corrected as text, everything else as chosen.
struct PanelSettingsInput
{
    QString panelNumber;
    QString serial; // hexadecimal
    std::array<QString, 4> masterRelayTimes;
    std::array<QString, 2> globalZones;
    QString capacity;
    QString blockTime; // in the unit of `values`' block time
    QString detectorTime;
    // Every other setting as chosen; its panel number, serial and the fields above are replaced
    // by what the check makes of the texts.
    PanelSlot values;

    // The input a slot's stored values give (what the window shows when it opens).
    static PanelSettingsInput fromSlot(const PanelSlot& slot);

    // The panel number must be a whole number 1..64 and the serial 1 to 4 hexadecimal digits, not
    // 0: anything else is refused with the station's message (returned; *slot untouched). The other
    // typed numbers are corrected without a word: a master relay time outside 1..30 becomes 1, a
    // global zone outside 1..64 becomes 1, a capacity outside 1..9999 becomes 9999, a block time
    // above 60 (or not a number) becomes 0, a detector time outside 1..9 becomes 1.
    Message check(PanelSlot* slot) const;
};
