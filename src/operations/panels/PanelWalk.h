#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/WalkResult.h"
#include "store/Message.h"

#include <functional>

struct OperationContext;
struct PanelEntry;
class PanelVisit;

// The road every panel operation takes, written once: the confirmation, the administrator check,
// the target panels (the selected one, or every usable roster entry in roster order), then one
// panel after another over the single link: select it, open the link, the member's work,
// progress; on a failure in the walk over all panels a question whether to go on; a final
// message; the link closed, the progress and status line cleared and the earlier selection
// restored on every way out.
class PanelWalk
{
public:
    // What the member's work on one panel came to.
    enum class PanelOutcome
    {
        Succeeded,
        // The walk handles it: the failure question (all panels) or the failure message.
        Failed,
        // Failed, and the member already told the person (or asked and was told to go on): the
        // walk counts it and goes on without a word of its own.
        FailedHandled,
        // The member asked and was told to stop, or cancel was requested: the walk ends quietly.
        Stop,
    };

    enum class Progress
    {
        RosterPositions, // the walk counts panels
        ByMember, // the member counts (users), through PanelVisit::progress
        None
    };

    enum class LinkFailure
    {
        // "TCPIP Portu Açılamadı" and the whole walk stops.
        StopWalk,
        // Door operations: "Bağlantı Kurulamadı!" as the panel's status line, and on to the next.
        ReportAndContinue
    };

    struct Plan
    {
        // Asked first unless empty; anything but Yes stops.
        Message confirmation;
        bool checkRights = true;
        PanelTarget target = PanelTarget::Selected;
        // The question after a failure in the walk over all panels; empty: panel number +
        // " nolu panelde hata oluştu. İşlem tamamlanamadı! Devam etmek istiyor musunuz?".
        std::function<Message(const PanelEntry&)> failureQuestion;
        // Final messages; the selected-panel ones are told after that panel's work.
        Message allDone = Message(QStringLiteral("Tüm işlemler tamamlandı!"));
        Message selectedSucceeded = Message(QStringLiteral("İşlem başarı ile tamamlandı!"));
        Message selectedFailed = Message(QStringLiteral("Hata, İşlem tamamlanamadı!"));
        // Lines put under the final message when it is told (what was done, counted); none when
        // empty. Asked at the end, so it may count what the work did.
        std::function<Message()> summary;
        Progress progress = Progress::RosterPositions;
        LinkFailure linkFailure = LinkFailure::StopWalk;
        // Door operations: "Panel " + n + " : " + "Bağlanılıyor..." on the status line while
        // connecting, and each panel's result on the status line in the walk over all panels.
        bool reportEachPanel = false;
        // A check of the person's choices before the confirmation, so that nobody is asked to go
        // on with something that cannot run; a non-empty message is told and the walk ends as Refused.
        std::function<Message()> beforeConfirmation;
        // Checks around the administrator check, after the confirmation and before any panel; a
        // non-empty message is told and the walk ends as Refused.
        std::function<Message()> beforeRights;
        std::function<Message()> afterRights;
    };

    using Work = std::function<PanelOutcome(PanelVisit&)>;

    PanelWalk(OperationContext& context, Plan plan);

    WalkResult run(const Work& work);

    // The default failure question for a panel number.
    static Message defaultFailureQuestion(qint32 panelNumber);

private:
    Message withSummary(Message message) const;

    OperationContext& m_context;
    Plan m_plan;
};
