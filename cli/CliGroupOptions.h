#pragma once

#include "CliArguments.h"
#include "operations/configuration/GroupDetailRow.h"
#include "operations/configuration/GroupMasterRow.h"

#include <QList>
#include <QString>

// The options of an access group on the command line: its counters and switches
// ("--access-count 2 --anti-passback-off on") and what it may do on one panel ("--doors 1100
// --time-groups 1,1,0,0 --zones 1,1,1,1"), and the same written back as such options for the
// list. Only the options given change a row.
class CliGroupOptions
{
public:
    static QList<CliArguments::Option> masterOptions();
    static QList<CliArguments::Option> doorOptions();

    // Write the given options into the row; false with a reason when one is not understood.
    static bool applyMaster(const CliArguments& args, GroupMasterRow* row, QString* error);
    static bool applyDoors(const CliArguments& args, GroupDetailRow* row, QString* error);

    // The options that would set what differs from a new group's values; "" when nothing does.
    static QString describe(const GroupMasterRow& row);
    static QString describe(const GroupDetailRow& row);
};
