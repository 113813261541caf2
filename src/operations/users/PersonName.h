#pragma once

#include <QString>

// A person's name as lists and grids show it: first name, a blank, last name, with the blanks
// the columns may carry trimmed away.
class PersonName
{
public:
    static QString join(const QString& first, const QString& last);
};
