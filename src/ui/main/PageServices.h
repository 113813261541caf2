#pragma once

#include "store/StationSettings.h"

#include <QString>

class Clock;
class Database;
class OperatorSession;
class Station;
class WindowOperator;

// What the main window lends its panel-operation pages: the station (worker, roster, live
// monitor, network settings) with its window-thread database, login session, settings and
// clock at hand, the window's operator (message boxes, PrBar, status line) and where
// photographs are kept.
struct PageServices
{
    Station* station = nullptr;
    Database* db = nullptr;
    OperatorSession* session = nullptr;
    // Server or client and the panels a client watches (fixed for the run of the station).
    StationSettings settings;
    // The station's clock: "now" for whatever is stamped, shown or counted down.
    const Clock* clock = nullptr;
    WindowOperator* op = nullptr;
    QString pictureFolder;
    // The panel search's countdown: ticks of tickMs each (3 of a second in the field).
    int searchTicks = 3;
    int searchTickMs = 1000;

    // The services of a station, for pages talking through op.
    static PageServices of(Station& station, WindowOperator* op);
};
