#pragma once

#include "operations/panels/PanelWalk.h"
#include "operations/panels/WalkResult.h"
#include "store/Message.h"

#include <QList>
#include <QMutex>

struct OperationContext;

// The unattended walk over all panels (the daily runs, the service, the command line with
// --parallel): up to `parallel` panels at once, each on its own thread with its own link and its
// own database connection, one request at a time per panel with the link's usual time-outs and
// pauses. Nobody is asked anything: a panel that fails is noted with its reason, the others go on,
// and the failures are told together at the end. A panel that leaves `giveUpAfter` requests in a
// row unanswered is given up as unreachable and left for the next run.
class ParallelWalk
{
public:
    struct Options
    {
        // The daily runs' usual width; the command line asks for its own.
        int parallel = 8;
        // 0: never give up on a panel.
        int giveUpAfter = 3;
        // When above 0, the progress counts the members each panel's work reports (users), out
        // of this many a panel times the panels, so that a long send moves while panels are
        // served; otherwise it counts the panels done.
        int membersPerPanel = 0;
    };

    struct PanelFailure
    {
        qint32 panelNumber = 0;
        bool unreachable = false;
        // What the member told about the panel (may be empty).
        Message reason;
    };

    struct Result
    {
        WalkResult walk;
        QList<PanelFailure> failures;
    };

    ParallelWalk(OperationContext& context, Options options);

    // Runs the work for every usable roster entry the station may reach. The work runs on the
    // walk's threads with a context of its own (link, connection, and an operator that keeps the
    // person's operator safe from several threads); it must not touch the roster's selection.
    Result run(const PanelWalk::Work& work);

    // Held while the lanes speak to the person's operator: whoever else speaks to it during the
    // walk (a member's own message sink) takes it too, so that one call ends before the next.
    QMutex& tellLock() { return m_tellMutex; }

    // The failures as one message, a line per panel; empty when none failed.
    static Message failureReport(const QList<PanelFailure>& failures);

private:
    OperationContext& m_context;
    Options m_options;
    QMutex m_tellMutex;
};
