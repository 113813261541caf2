#pragma once

#include "operations/panels/SentData.h"

class CliContext;

// `... send --dry-run`: panel by panel, what a send would take and how it differs from the last
// send, worked out from the database alone (no panel is connected).
class CliSendPreview
{
public:
    // Users: the counts and IDs added, changed and removed since each panel's last send.
    static int users(CliContext& context, bool changedOnly);
    // Groups or time groups: each panel's last send and whether the data changed since.
    static int sentData(CliContext& context, SentData what);
};
