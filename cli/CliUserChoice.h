#pragma once

#include "CliArguments.h"

class CliContext;

// "--user ID" on the command line: the Users row with that panel user ID, named by its record
// number as the operations expect.
class CliUserChoice
{
public:
    static CliArguments::Option option(const QString& help);
    // The row's record number; 0 after printing why when the option is bad or no row has that ID.
    static qint64 recordNo(CliContext& context, const CliArguments& args);
};
