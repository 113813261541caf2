#pragma once

#include <QtGlobal>
#include <array>

// What a door command drives: doors, panel master relays, and on whose behalf.
struct DoorCommandText
{
    std::array<bool, 4> doors{};
    std::array<bool, 4> masterRelays{};
    bool withDoorMasterRelay = false;
    bool signalReader = false;
    qint32 userId = 0; // 0: no user involved
    qint32 cardId = 0; // 0: no card involved
};
