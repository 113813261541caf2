#include "operations/configuration/TimeGroupTransfer.h"

#include "operations/configuration/TimeGroupRepository.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelSendLog.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/GroupCommands.h"
#include "store/Message.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace {

// Sends the list over the open link; a time group the panel does not take is asked about.
PanelWalk::PanelOutcome sendList(PanelVisit& visit, const QList<TimeGroupRow>& timeGroups, bool countProgress,
                                 int& failed)
{
    const int total = static_cast<int>(timeGroups.size());
    if (countProgress)
        visit.progress(0, total);
    for (int i = 0; i < total; ++i) {
        const TimeGroupRecord& record = timeGroups.at(i).record;
        if (!SendTimeGroup(visit.link(), visit.address(), record).isAccepted()) {
            ++failed;
            const Message question
                = Message()
                      .value(record.number)
                      .add(u" nolu zaman grubu ayarları gönderilemedi, Devam etmek istiyor musunuz?"_s);
            if (!visit.askToContinue(question))
                return PanelWalk::PanelOutcome::Stop;
        }
        if (countProgress)
            visit.progress(i + 1, total);
    }
    return PanelWalk::PanelOutcome::Succeeded;
}

void noteSent(PanelVisit& visit)
{
    QString error;
    if (!PanelSendLog(visit.context().db).noteSent(visit.panelNumber(), SentData::TimeGroups, visit.now(), &error))
        qWarning().noquote() << "panel" << visit.panelNumber() << "send log:" << error;
}

} // namespace

TimeGroupTransfer::TimeGroupTransfer(OperationContext& context)
    : m_context(context)
{ }

WalkResult TimeGroupTransfer::send(PanelTarget target)
{
    const bool all = target == PanelTarget::All;
    QList<TimeGroupRow> timeGroups;
    PanelWalk::Plan plan;
    plan.confirmation = all ? Message(u"Zaman grup ayarlarını tüm panellere göndermek istiyor musunuz?"_s)
                            : Message(u"Zaman grup ayarlarını seçilen panele göndermek istiyor musunuz?"_s);
    plan.target = target;
    plan.progress = all ? PanelWalk::Progress::RosterPositions : PanelWalk::Progress::ByMember;
    // The selected panel ends as the walk over all panels does, whatever was skipped on the way.
    plan.selectedSucceeded = Message(u"Tüm işlemler tamamlandı!"_s);
    plan.afterRights = [&] {
        QString error;
        timeGroups = TimeGroupRepository(m_context.db).list(&error);
        if (!error.isEmpty())
            return Message(u"Hata, İşlem tamamlanamadı!"_s);
        if (timeGroups.isEmpty())
            return Message(u"Zaman grup listesi boş!"_s);
        return Message();
    };
    int failed = 0;
    WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        if (visit.allPanels() && !EraseTimeGroups(visit.link(), visit.address()).isAccepted()) {
            const Message question
                = Message()
                      .value(visit.panelNumber())
                      .add(
                          u" nolu panelin zaman grup hafızası silinemedi! Sıradaki panelden devam etmek istiyor musunuz?"_s);
            return visit.askToContinue(question) ? PanelWalk::PanelOutcome::FailedHandled
                                                 : PanelWalk::PanelOutcome::Stop;
        }
        const int failedBefore = failed;
        const PanelWalk::PanelOutcome outcome = sendList(visit, timeGroups, !visit.allPanels(), failed);
        // A panel that took every time group holds what the database holds.
        if (outcome == PanelWalk::PanelOutcome::Succeeded && failed == failedBefore)
            noteSent(visit);
        return outcome;
    });
    result.membersFailed = failed;
    return result;
}

WalkResult TimeGroupTransfer::erase()
{
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Tüm zaman grup hafızasını silmek istediğinizden emin misiniz?"_s)
                            .newLine()
                            .add(u"(Not: Bu işlem 5-6 saniye sürecektir!)"_s);
    plan.target = PanelTarget::Selected;
    return PanelWalk(m_context, plan).run([](PanelVisit& visit) {
        return EraseTimeGroups(visit.link(), visit.address()).isAccepted() ? PanelWalk::PanelOutcome::Succeeded
                                                                           : PanelWalk::PanelOutcome::Failed;
    });
}
