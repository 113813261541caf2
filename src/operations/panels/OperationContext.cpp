#include "operations/panels/OperationContext.h"

QDateTime OperationContext::now() const
{
    return clock ? clock() : QDateTime::currentDateTime();
}
