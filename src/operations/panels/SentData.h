#pragma once

// What the station sends to a panel, as the send log keeps it apart.
enum class SentData
{
    Users = 1,
    Groups = 2,
    TimeGroups = 3
};
