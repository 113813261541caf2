#pragma once

// How a panel operation ended, for callers that go on from it (the command line's exit code, the
// scheduler, tests). What the person was told is already said through the Operator.
struct WalkResult
{
    enum class Outcome
    {
        Completed, // every target panel was visited (some may have failed and been skipped)
        Declined, // the confirmation was answered No
        NoRights, // the administrator check failed
        Refused, // a precondition failed (empty list, bad range, client station...)
        LinkFailed, // a panel's link could not be opened; the walk stopped there
        Stopped, // a failure question was answered No, or cancel was requested
    };

    Outcome outcome = Outcome::Completed;
    int panelsVisited = 0;
    int panelsFailed = 0;
    // Members of the list left out before any panel was visited (users whose card number does not
    // fit the panels); the person was told, and the rest of the list went to the panels.
    int membersRefused = 0;
    // Members a panel did not give or take although it answered for others (the person was asked
    // and chose to go on).
    int membersFailed = 0;

    bool completed() const { return outcome == Outcome::Completed; }
    // Completed without a single failing panel or refused or failed member.
    bool succeeded() const
    {
        return outcome == Outcome::Completed && panelsFailed == 0 && membersRefused == 0 && membersFailed == 0;
    }
};
