#include "operations/configuration/GroupTransfer.h"

#include "operations/configuration/GroupRepository.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelSendLog.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/GroupCommands.h"
#include "store/Message.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace {

int fitted(int value, int low, int high, int otherwise)
{
    return value >= low && value <= high ? value : otherwise;
}

// Sends every group's rows of the visited panel over the open link; a group the panel does not
// take is asked about.
PanelWalk::PanelOutcome sendList(PanelVisit& visit, const QList<GroupMasterRow>& groups, bool countProgress,
                                 int& failed)
{
    const int total = static_cast<int>(groups.size());
    if (countProgress)
        visit.progress(0, total);
    const GroupRepository repository(visit.context().db);
    for (int i = 0; i < total; ++i) {
        const GroupMasterRow& group = groups.at(i);
        QString error;
        const QList<GroupDetailRow> rows = repository.detailsForPanel(group.number, visit.panelNumber(), &error);
        bool taken = error.isEmpty();
        for (const GroupDetailRow& row : rows) {
            if (!taken)
                break;
            taken = SendGroup(visit.link(), visit.address(), GroupTransfer::record(group, row)).isAccepted();
        }
        if (!taken) {
            ++failed;
            const Message question = Message()
                                         .value(group.number)
                                         .add(u" nolu grup ayarları gönderilemedi, Devam etmek istiyor musunuz?"_s);
            if (!visit.askToContinue(question))
                return PanelWalk::PanelOutcome::Stop;
        }
        if (countProgress)
            visit.progress(i + 1, total);
    }
    return PanelWalk::PanelOutcome::Succeeded;
}

} // namespace

GroupTransfer::GroupTransfer(OperationContext& context)
    : m_context(context)
{ }

AccessGroupRecord GroupTransfer::record(const GroupMasterRow& master, const GroupDetailRow& detail)
{
    AccessGroupRecord r;
    r.groupNo = detail.groupNo;
    r.doorTimeGroups = detail.doorTimeGroups;
    r.doors = detail.doors;
    r.accessCountLimit = fitted(master.accessCount, 0, 255, 0);
    r.accessCountZone = fitted(master.accessCountZone, 1, 99, 1);
    r.insideCountLimit = fitted(master.insideCount, 0, 9999, 0);
    r.insideCountZone = fitted(master.insideCountZone, 1, 99, 1);
    r.dailyApprovalRequired = master.dailyApprovalRequired;
    r.repeatedAccessBlockOff = master.repeatedAccessBlockOff;
    r.localCapacityOff = master.localCapacityOff;
    r.clearInsideCountAtNight = master.clearInsideCountAtNight;
    r.antiPassbackOff = master.antiPassbackOff;
    return r;
}

WalkResult GroupTransfer::send(PanelTarget target)
{
    const bool all = target == PanelTarget::All;
    QList<GroupMasterRow> groups;
    PanelWalk::Plan plan;
    plan.confirmation = all ? Message(u"Grup ayarlarını tüm panellere göndermek istiyor musunuz?"_s)
                            : Message(u"Grup ayarlarını seçilen panele göndermek istiyor musunuz?"_s);
    plan.target = target;
    plan.progress = all ? PanelWalk::Progress::RosterPositions : PanelWalk::Progress::ByMember;
    // The selected panel ends as the walk over all panels does, whatever was skipped on the way.
    plan.selectedSucceeded = Message(u"Tüm işlemler tamamlandı!"_s);
    plan.afterRights = [&] {
        QString error;
        groups = GroupRepository(m_context.db).masters(&error);
        if (!error.isEmpty())
            return Message(u"Hata, İşlem tamamlanamadı!"_s);
        if (groups.isEmpty())
            return all ? Message(u"Grup listesi boş"_s) : Message(u"Geçiş grup listesi boş!"_s);
        return Message();
    };
    int failed = 0;
    WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        const int failedBefore = failed;
        const PanelWalk::PanelOutcome outcome = sendList(visit, groups, !visit.allPanels(), failed);
        // A panel that took every group holds what the database holds.
        if (outcome == PanelWalk::PanelOutcome::Succeeded && failed == failedBefore) {
            QString error;
            if (!PanelSendLog(visit.context().db).noteSent(visit.panelNumber(), SentData::Groups, visit.now(), &error))
                qWarning().noquote() << "panel" << visit.panelNumber() << "send log:" << error;
        }
        return outcome;
    });
    result.membersFailed = failed;
    return result;
}

WalkResult GroupTransfer::erase()
{
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Tüm geçiş grup hafızasını silmek istediğinizden emin misiniz?"_s)
                            .newLine()
                            .add(u"(Not: Bu işlem 5-6 saniye sürecektir!)"_s);
    plan.target = PanelTarget::Selected;
    return PanelWalk(m_context, plan).run([](PanelVisit& visit) {
        return EraseGroups(visit.link(), visit.address()).isAccepted() ? PanelWalk::PanelOutcome::Succeeded
                                                                       : PanelWalk::PanelOutcome::Failed;
    });
}
