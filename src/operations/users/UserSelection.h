#pragma once

#include "operations/users/UserIdRange.h"

// Which users a send takes from Users: all with an ID above 0, or an ID range.
struct UserSelection
{
    bool allUsers = true;
    UserIdRange range;

    static UserSelection all();
    static UserSelection ids(const UserIdRange& range);
};
