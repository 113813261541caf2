#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"

struct OperationContext;

// The daily approvals between the database and the panels: a group's members to the selected
// panel, one "%CS" each in ID order ("Kayıt yok!" before any connection for an empty group), and
// the nightly reset that takes every approval back and, when asked, tells every panel.
class DailyPermissionTransfer
{
public:
    explicit DailyPermissionTransfer(OperationContext& context);

    WalkResult send(int group);
    // Every approval back to no in the database; with toPanels, the members of the groups that
    // need the approval are then sent as not approved to every panel, without a question (the
    // scheduler runs it). Returns how the walk ended (Completed when nothing was to be sent).
    WalkResult reset(bool toPanels);

private:
    OperationContext& m_context;
};
