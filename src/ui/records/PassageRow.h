#pragma once

#include "operations/records/RecordRow.h"

#include <QString>

// One passage as the record grids show it: the stored row, the name of the person (a visitor's
// own name for a visitor card) and the Turkish text of its event code.
struct PassageRow
{
    RecordRow record;
    QString name;
    QString eventText;
};
