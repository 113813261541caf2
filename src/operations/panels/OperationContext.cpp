#include "operations/panels/OperationContext.h"

#include "store/Clock.h"

QDateTime OperationContext::now() const
{
    return clock.now();
}
