#pragma once

#include "operations/doors/DoorRequest.h"
#include "operations/doors/ManualAccessRequest.h"
#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"

struct OperationContext;

// Doors and relays driven by hand ("%DT", "%FO", "%FC" with the door text), and the manual
// passage, which is also stored in AccessDatas.
class DoorOperations
{
public:
    explicit DoorOperations(OperationContext& context);

    WalkResult doorProcess(PanelTarget target, const DoorRequest& request);
    // The selected panel only; no rights check.
    WalkResult manualAccess(const ManualAccessRequest& request);

private:
    OperationContext& m_context;
};
