#pragma once

#include "CliGlobalOptions.h"
#include "CliOperator.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/WalkResult.h"
#include "operations/station/Station.h"
#include "protocol/PanelLink.h"
#include "store/Clock.h"

#include <memory>

class CliStartupUi;

// What every command works with: the started station (settings, database, roster, login state,
// clock), the command line's operator and the one panel link, used on the main thread. Nothing
// of the station runs by itself: a command starts the live monitor or the worker when it needs
// them.
class CliContext
{
public:
    explicit CliContext(const CliGlobalOptions& options);
    ~CliContext();
    CliContext(const CliContext&) = delete;
    CliContext& operator=(const CliContext&) = delete;

    const CliGlobalOptions& options() const { return m_options; }

    // Starts the station on the data folder. A folder that is not set up ends here with a hint
    // to the set-up command, unless `ui` brings the settings (the set-up command does). Returns
    // an exit status: Success, or NotStarted after printing why.
    int start(CliStartupUi& ui);
    int start();

    // The started station; only after start() succeeded.
    Station& station() { return *m_station; }
    Database& db() { return m_station->db(); }
    const StationSettings& settings() const { return m_station->settings(); }
    const DataFolder& folder() const { return m_station->folder(); }
    QString databaseLocation() const { return m_station->databaseLocation(); }
    PanelRoster& roster() { return m_station->roster(); }
    PanelLink& link() { return *m_link; }
    OperatorSession& session() { return m_station->session(); }
    CliOperator& op() { return m_operator; }
    const Clock& clock() const { return m_clock; }
    UdpSettings udp() const;

    // A fresh context for one panel operation.
    OperationContext operationContext();

    // Administrator rights for commands that change master data outside a panel walk; tells
    // the refusal and returns false when they cannot be had.
    bool requireAdministrator();
    // For operations that ask their question before they check rights: the rights are had (or
    // refused) first, so that nobody answers a question for nothing. -1 when in force, else the
    // exit status to end with.
    int rightsFirst();

    // The exit status for how a panel operation ended, with a hint printed for a question that
    // needed --yes or --no.
    int exitFor(const WalkResult& result);
    // The exit status when an operation reports only success or failure.
    int exitFor(bool ok);

    // Prints a message of the station in the chosen language on standard error.
    static void printError(const Message& message);
    // The exit status of a stored change: success, or its refusal and the database's reason.
    static int exitForChange(bool ok, const Message& refusal, const QString& databaseError);

private:
    int finishStart(CliStartupUi& ui);
    int hintForUnanswered();

    CliGlobalOptions m_options;
    const Clock& m_clock;
    std::unique_ptr<Station> m_station;
    std::unique_ptr<PanelLink> m_link;
    CliOperator m_operator;
};
