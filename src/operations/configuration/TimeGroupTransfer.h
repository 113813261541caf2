#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"

struct OperationContext;

// The time groups between the database and the panels: every stored time group, one "%NG" each in
// number order, to the selected panel or to every panel in use, and the erase of a panel's
// time-group memory ("%EG").
//
// Sending to the selected panel writes over the numbers it sends and leaves the panel's other
// time groups in place; sending to all panels erases each panel's time-group memory first. A
// time group a panel does not take is asked about (go on or stop) and counted in membersFailed.
// The database is never changed by a send.
class TimeGroupTransfer
{
public:
    explicit TimeGroupTransfer(OperationContext& context);

    WalkResult send(PanelTarget target);
    // The selected panel's time-group memory.
    WalkResult erase();

private:
    OperationContext& m_context;
};
