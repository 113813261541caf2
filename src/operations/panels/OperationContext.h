#pragma once

#include "operations/live/UdpSettings.h"

#include <QDateTime>

class Clock;
class Database;
class Operator;
class OperatorSession;
class PanelLink;
class PanelRoster;
struct StationSettings;

// Everything one panel operation needs, handed in by whoever runs it (the worker thread, the
// command line, a test). "Now" is the station's clock, so tests can fix it.
struct OperationContext
{
    Database& db;
    PanelLink& link;
    Operator& op;
    OperatorSession& session;
    const StationSettings& settings;
    PanelRoster& roster;
    const Clock& clock;
    UdpSettings udp = {};

    // The station clock's time.
    QDateTime now() const;
};
