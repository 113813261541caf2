#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"

struct OperationContext;

// The group calendars 1..8 to the selected panel or to every panel in use, one "%CZ" each in
// number order. A calendar a panel does not take is asked about (go on or stop) and counted in
// membersFailed. An empty list stops before any panel.
class GroupCalendarTransfer
{
public:
    explicit GroupCalendarTransfer(OperationContext& context);

    WalkResult send(PanelTarget target);

private:
    OperationContext& m_context;
};
