#pragma once

#include <QtGlobal>

// What the live monitor has seen since it started.
struct LiveCounters
{
    qint64 framesReceived = 0; // whole frames cut from connections and datagrams
    qint64 framesDropped = 0; // malformed, unknown or out-of-range frames
    qint64 passagesReceived = 0;
    qint64 passagesStored = 0;
    qint64 passagesFiltered = 0; // refused passages the live switches drop
    qint64 passagesDuplicate = 0; // already stored (by the offline import or the back-fill)
    qint64 statusFrames = 0;
    qint64 batchesCommitted = 0;
    qint64 storeFailures = 0;
    qint64 connectionsTimedOut = 0; // closed after sending no valid frame for too long
    qint64 connectionsEvicted = 0; // closed to make room for a new connection
    int connections = 0;
};
