#include "operations/live/StatusRefresh.h"

#include "operations/live/StatusListener.h"
#include "operations/panels/PanelRoster.h"

#include <QMetaObject>
#include <QThread>

void StatusRefresh::markUnknown(PanelRoster& roster)
{
    for (const PanelEntry& e : roster.entries()) {
        if (e.isEligible())
            roster.doorStatus().markUnknown(e.position);
    }
    roster.notifyDoorStatusChanged();
}

bool StatusRefresh::run(PanelRoster& roster, StatusListener& listener)
{
    markUnknown(roster);
    if (listener.thread() == QThread::currentThread())
        return listener.requestStatus();
    bool sent = false;
    QMetaObject::invokeMethod(&listener, &StatusListener::requestStatus, Qt::BlockingQueuedConnection, &sent);
    return sent;
}
