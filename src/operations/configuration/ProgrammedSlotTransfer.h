#pragma once

#include "operations/panels/WalkResult.h"

struct OperationContext;

// The selected panel's programmed door operations between the database and the panel: every
// stored slot sent with "%ZW", or read back with "%ZR", in weekday and slot order. Only doors and
// relays 1..4 travel. A slot that fails is asked about by its weekday (go on or stop) and counted
// in membersFailed; a slot read back overwrites its row only when the whole answer could be read.
class ProgrammedSlotTransfer
{
public:
    explicit ProgrammedSlotTransfer(OperationContext& context);

    WalkResult send();
    WalkResult receive();

private:
    OperationContext& m_context;
};
