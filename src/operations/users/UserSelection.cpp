#include "operations/users/UserSelection.h"

UserSelection UserSelection::all()
{
    return UserSelection();
}

UserSelection UserSelection::ids(const UserIdRange& range)
{
    UserSelection s;
    s.allUsers = false;
    s.range = range;
    return s;
}
