#include "operations/StatusRefresh.h"

#include "operations/PanelRoster.h"
#include "operations/StatusListener.h"

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
