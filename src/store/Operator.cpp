#include "store/Operator.h"

void Operator::panelProgress(qint32, int value, int maximum)
{
    progress(value, maximum);
}
