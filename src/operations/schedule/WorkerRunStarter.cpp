#include "operations/schedule/WorkerRunStarter.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelWorker.h"
#include "operations/schedule/ScheduledRunJobs.h"
#include "store/Operator.h"

WorkerRunStarter::WorkerRunStarter(PanelWorker& worker, Operator& op, OperatorSession& session, PanelRoster& roster,
                                   const Setup& setup, QObject* parent)
    : QObject(parent)
    , m_worker(worker)
    , m_op(op)
    , m_session(session)
    , m_roster(roster)
    , m_setup(setup)
{
    connect(&m_worker, &PanelWorker::finished, this, [this] {
        if (auto finished = std::exchange(m_finished, {}))
            finished();
    });
}

bool WorkerRunStarter::start(ScheduledRun run, std::function<void()> finished)
{
    if (m_finished || m_worker.busy())
        return false;
    Operator* op = &m_op;
    OperatorSession* session = &m_session;
    PanelRoster* roster = &m_roster;
    const Setup setup = m_setup;
    m_finished = std::move(finished);
    const bool submitted = m_worker.submit([=](PanelLink& link, Database& db) {
        OperationContext context{ db, link, *op, *session, setup.settings, *roster, *setup.clock, setup.udp };
        switch (run) {
        case ScheduledRun::DailySend:
            ScheduledRunJobs::dailySend(context, [op](const Message& message) { op->status(message); },
                                        { setup.walk, setup.sendChanged });
            break;
        case ScheduledRun::DailyRetrieval:
            ScheduledRunJobs::dailyRetrieval(context, setup.eraseAfterRetrieval, setup.walk);
            break;
        case ScheduledRun::PeriodicBackup: {
            const PassageBackup::Result result
                = ScheduledRunJobs::periodicBackup(context, setup.backupFolder, context.now());
            if (!result.ok)
                op->tell(result.message, Operator::Kind::Error);
            break;
        }
        case ScheduledRun::ApprovalReset:
            ScheduledRunJobs::approvalReset(context);
            break;
        }
    });
    if (!submitted)
        m_finished = {};
    return submitted;
}
