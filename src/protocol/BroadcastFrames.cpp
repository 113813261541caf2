#include "protocol/BroadcastFrames.h"

QByteArray BroadcastFrames::statusRequest()
{
    return "%GMS**\r";
}

QByteArray BroadcastFrames::searchRequest()
{
    return "%US1975**\r";
}

QByteArray BroadcastFrames::alarmReset()
{
    return "%AS0000000**\r";
}

QList<QByteArray> BroadcastFrames::splitDatagram(QByteArrayView datagram)
{
    QList<QByteArray> pieces;
    qsizetype start = datagram.indexOf('$');
    while (start >= 0) {
        const qsizetype next = datagram.indexOf('$', start + 1);
        pieces.append(datagram.sliced(start, (next < 0 ? datagram.size() : next) - start).toByteArray());
        start = next;
    }
    return pieces;
}
