#pragma once

#include <array>

// What the door tab asks for: the operation (0 trigger "DT", 1 hold open "FO", 2 hold closed
// "FC"; -1 none chosen), the doors and panel master relays chosen in the list, and the two flags.
struct DoorRequest
{
    int action = -1;
    std::array<bool, 4> doors{};
    std::array<bool, 4> relays{};
    bool masterRelay = false; // also drive each chosen door's own master relay
    bool reader = false; // signal on the chosen doors' readers

    bool anyChosen() const;
};
