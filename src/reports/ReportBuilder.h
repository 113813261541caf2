#pragma once

#include "reports/ReportFilter.h"
#include "reports/ReportKind.h"
#include "reports/ReportStatement.h"

class Database;

// Builds each report's statement from a filter. Every value the operator chose is bound; the
// text is made of fixed pieces only. The database is read for the global zone's doors and name
// and for the engine's dialect.
class ReportBuilder
{
public:
    static ReportStatement build(const Database& db, ReportKind kind, const ReportFilter& filter);

    // The start and end of the access reports' date window ("all dates" gives invalid values).
    static void dateWindow(const ReportFilter& filter, QDateTime* start, QDateTime* end);
    // The attendance reports' day: from one second after midnight to 23:59:59.
    static void dayWindow(const QDate& day, QDateTime* start, QDateTime* end);

    // Refusals the builder gives.
    static Message flatNotNumberMessage();
    static Message dateOrderMessage();
    static Message noDayMessage();
};
