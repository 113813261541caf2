#pragma once

#include "operations/live/UdpSettings.h"
#include "protocol/PanelLink.h"
#include "store/StationSettings.h"

#include <QDateTime>
#include <QString>
#include <functional>

class Database;
class OperatorSession;
class WindowOperator;

// What the main window lends its panel-operation pages: the window thread's database, the
// login session, the station settings, the window's operator (message boxes, PrBar, status
// line), where photographs are kept, and the network settings of the worker.
struct PageServices
{
    Database* db = nullptr;
    OperatorSession* session = nullptr;
    // Server or client and the panels a client watches (fixed for the run of the station).
    StationSettings settings;
    WindowOperator* op = nullptr;
    QString pictureFolder;
    UdpSettings udp;
    PanelLink::Settings linkSettings;
    // "Now" for operations that store a moment (manual passage); the system clock when empty.
    std::function<QDateTime()> clock;
    // The panel search's countdown: ticks of tickMs each (3 of a second in the field).
    int searchTicks = 3;
    int searchTickMs = 1000;
};
