#pragma once

#include "operations/live/UdpSettings.h"

#include <QDateTime>
#include <functional>

class Database;
class Operator;
class OperatorSession;
class PanelLink;
class PanelRoster;
struct StationSettings;

// Everything one panel operation needs, handed in by whoever runs it (the worker thread, the
// command line, a test). The clock is injectable so tests can fix "now".
struct OperationContext
{
    Database& db;
    PanelLink& link;
    Operator& op;
    OperatorSession& session;
    const StationSettings& settings;
    PanelRoster& roster;
    std::function<QDateTime()> clock = {};
    UdpSettings udp = {};

    // The clock's time, or the system's local time when no clock is set.
    QDateTime now() const;
};
