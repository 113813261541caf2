#include "operations/panels/PanelWalk.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "protocol/PanelLink.h"
#include "store/Operator.h"
#include "store/RightsCheck.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Closes the link, clears the progress and gives the selection back, however the walk ends.
class WalkCleanup
{
public:
    WalkCleanup(OperationContext& context, int previousSelection, bool keepStatus)
        : m_context(context)
        , m_previous(previousSelection)
        , m_keepStatus(keepStatus)
    { }
    ~WalkCleanup()
    {
        m_context.link.DisconnectPanel();
        m_context.op.progress(0, 0);
        // What a panel was doing must not outlive the walk; a walk that reports each panel's
        // result on the status line leaves that result there.
        if (!m_keepStatus)
            m_context.op.status(Message());
        if (m_previous > 0)
            m_context.roster.select(m_previous);
    }
    WalkCleanup(const WalkCleanup&) = delete;
    WalkCleanup& operator=(const WalkCleanup&) = delete;

private:
    OperationContext& m_context;
    int m_previous;
    bool m_keepStatus;
};

Message panelLine(qint32 panelNumber, const Message& text)
{
    return Message(u"Panel "_s).value(panelNumber).value(u" : "_s).append(text);
}

} // namespace

PanelWalk::PanelWalk(OperationContext& context, Plan plan)
    : m_context(context)
    , m_plan(std::move(plan))
{ }

Message PanelWalk::defaultFailureQuestion(qint32 panelNumber)
{
    return Message()
        .value(panelNumber)
        .add(u" nolu panelde hata oluştu. İşlem tamamlanamadı! Devam etmek istiyor musunuz?"_s);
}

Message PanelWalk::withSummary(Message message) const
{
    if (m_plan.summary) {
        if (const Message lines = m_plan.summary(); !lines.isEmpty())
            message.newLine().append(lines);
    }
    return message;
}

WalkResult PanelWalk::run(const Work& work)
{
    Operator& op = m_context.op;
    PanelRoster& roster = m_context.roster;
    WalkResult result;
    auto refuse = [&](const Message& message, WalkResult::Outcome outcome) {
        op.tell(message, Operator::Kind::Warning);
        result.outcome = outcome;
        return result;
    };

    if (m_plan.beforeConfirmation) {
        const Message refusal = m_plan.beforeConfirmation();
        if (!refusal.isEmpty())
            return refuse(refusal, WalkResult::Outcome::Refused);
    }
    if (!m_plan.confirmation.isEmpty() && !op.ask(m_plan.confirmation)) {
        result.outcome = WalkResult::Outcome::Declined;
        return result;
    }
    if (m_plan.beforeRights) {
        const Message refusal = m_plan.beforeRights();
        if (!refusal.isEmpty())
            return refuse(refusal, WalkResult::Outcome::Refused);
    }
    if (m_plan.checkRights && !checkAdministratorRights(m_context.session, op)) {
        result.outcome = WalkResult::Outcome::NoRights;
        return result;
    }
    if (m_plan.afterRights) {
        const Message refusal = m_plan.afterRights();
        if (!refusal.isEmpty())
            return refuse(refusal, WalkResult::Outcome::Refused);
    }

    const bool all = m_plan.target == PanelTarget::All;
    QList<PanelEntry> targets;
    if (all) {
        for (const PanelEntry& e : roster.entries()) {
            // A client station only walks the panels it watches.
            if (e.isEligible() && roster.isReachable(e.position))
                targets << e;
        }
    } else if (const auto selected = roster.selectedEntry()) {
        if (!roster.isReachable(selected->position))
            return refuse(Message(u"Bu panele Client üzerinden erişilemez!"_s), WalkResult::Outcome::Refused);
        targets << *selected;
    } else {
        return refuse(Message(u"TCPIP Portu Açılamadı"_s), WalkResult::Outcome::LinkFailed);
    }

    WalkCleanup cleanup(m_context, roster.selectedPosition(), m_plan.reportEachPanel);
    const int positions = roster.count();
    for (const PanelEntry& entry : std::as_const(targets)) {
        roster.select(entry.position);
        if (m_plan.reportEachPanel)
            op.status(panelLine(entry.panelNumber, Message(u"Bağlanılıyor..."_s)));
        if (!m_context.link.ConnectPanel(entry.ip, entry.port)) {
            m_context.link.DisconnectPanel();
            if (m_plan.linkFailure == LinkFailure::StopWalk) {
                op.tell(Message(u"TCPIP Portu Açılamadı"_s), Operator::Kind::Error);
                result.outcome = WalkResult::Outcome::LinkFailed;
                return result;
            }
            ++result.panelsFailed;
            const Message failed(u"Bağlantı Kurulamadı!"_s);
            if (m_plan.reportEachPanel)
                op.status(panelLine(entry.panelNumber, failed));
            if (!all)
                op.tell(failed, Operator::Kind::Error);
            continue;
        }

        PanelVisit visit(m_context, entry, all);
        const PanelOutcome outcome = work(visit);
        ++result.panelsVisited;
        if (m_plan.progress == Progress::RosterPositions)
            op.panelProgress(entry.panelNumber, entry.position, positions);

        switch (outcome) {
        case PanelOutcome::Succeeded:
            // The panel's line says how it ended, not that it is still being connected to.
            if (m_plan.reportEachPanel)
                op.status(panelLine(entry.panelNumber, m_plan.selectedSucceeded));
            if (!all && !m_plan.selectedSucceeded.isEmpty())
                op.tell(withSummary(m_plan.selectedSucceeded));
            break;
        case PanelOutcome::Failed:
            ++result.panelsFailed;
            if (m_plan.reportEachPanel)
                op.status(panelLine(entry.panelNumber, m_plan.selectedFailed));
            if (!all) {
                op.tell(m_plan.selectedFailed, Operator::Kind::Error);
            } else if (!m_plan.reportEachPanel) {
                const Message question = m_plan.failureQuestion ? m_plan.failureQuestion(entry)
                                                                : defaultFailureQuestion(entry.panelNumber);
                if (!op.ask(question)) {
                    result.outcome = WalkResult::Outcome::Stopped;
                    return result;
                }
            }
            break;
        case PanelOutcome::FailedHandled:
            ++result.panelsFailed;
            break;
        case PanelOutcome::Stop:
            result.outcome = WalkResult::Outcome::Stopped;
            return result;
        }
    }

    if (all && !m_plan.allDone.isEmpty())
        op.tell(withSummary(m_plan.allDone));
    return result;
}
