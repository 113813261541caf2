#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"
#include "protocol/AccessGroupRecord.h"

struct GroupDetailRow;
struct GroupMasterRow;
struct OperationContext;

// The access groups between the database and the panels: every stored group in number order, one
// "%TN" for each of its rows of the panel, to the selected panel or to every panel in use, and the
// erase of a panel's group memory ("%TE").
//
// A group a panel does not take is asked about (go on or stop) and counted in membersFailed. The
// database is never changed by a send.
class GroupTransfer
{
public:
    explicit GroupTransfer(OperationContext& context);

    WalkResult send(PanelTarget target);
    // The selected panel's group memory.
    WalkResult erase();

    // What travels for one row of a group: the group's counters fitted to what a panel takes
    // rather than refused (a count of passages above 255, or of members inside above 9999, as no
    // limit; a zone outside 1..99 as zone 1).
    static AccessGroupRecord record(const GroupMasterRow& master, const GroupDetailRow& detail);

private:
    OperationContext& m_context;
};
