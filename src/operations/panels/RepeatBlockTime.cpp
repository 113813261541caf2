#include "operations/panels/RepeatBlockTime.h"

RepeatBlockTime RepeatBlockTime::unpack(qint32 packed)
{
    RepeatBlockTime block;
    if (packed < 0)
        return block;
    block.unit = packed / 100 == Minutes ? Minutes : Seconds;
    block.time = qMin(packed % 100, MaxTime);
    return block;
}

qint32 RepeatBlockTime::packed() const
{
    return (unit == Minutes ? 100 : 0) + qBound(0, time, MaxTime);
}

qint32 RepeatBlockTime::seconds() const
{
    return qBound(0, time, MaxTime) * (unit == Minutes ? 60 : 1);
}
