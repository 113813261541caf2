#pragma once

#include "CliArguments.h"
#include "operations/configuration/TimeGroupRow.h"

#include <QList>
#include <QString>

// The options that give a time group's type and restriction fields on the command line
// ("--type 3 --start-time 08:00 --end-time 17:00"), and the same fields written back as such
// options for the list. Only the options given change a row.
class CliTimeGroupOptions
{
public:
    static QList<CliArguments::Option> options();

    // Writes the given options into row; false with a reason when one is not understood.
    static bool apply(const CliArguments& args, TimeGroupRow* row, QString* error);

    // The options that would set the fields row's type uses, "" for a type without fields.
    static QString describe(const TimeGroupRow& row);
};
