#include "operations/configuration/DailyPermissionTransfer.h"

#include "operations/configuration/DailyPermissionRepository.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/CalendarCommands.h"

#include <QDebug>

using namespace Qt::StringLiterals;

DailyPermissionTransfer::DailyPermissionTransfer(OperationContext& context)
    : m_context(context)
{ }

WalkResult DailyPermissionTransfer::send(int group)
{
    QList<DailyPermissionRepository::Member> members;
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Kullanıcı Günlük Geçiş Onay listesini göndermek istiyor musunuz?"_s);
    plan.target = PanelTarget::Selected;
    plan.progress = PanelWalk::Progress::ByMember;
    plan.selectedSucceeded = Message(u"İşlem Tamamlandı!"_s);
    plan.afterRights = [&] {
        QString error;
        members = DailyPermissionRepository(m_context.db).members(group, &error);
        if (!error.isEmpty())
            return Message(u"Hata, İşlem tamamlanamadı!"_s);
        if (members.isEmpty())
            return Message(u"Kayıt yok!"_s);
        return Message();
    };
    int failed = 0;
    WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        const int total = static_cast<int>(members.size());
        visit.progress(0, total);
        for (int i = 0; i < total; ++i) {
            const DailyPermissionRepository::Member& member = members.at(i);
            if (!SendDailyApproval(visit.link(), visit.address(), member.id, member.approved).isAccepted()) {
                ++failed;
                const Message question = Message().value(member.id).add(
                    u" nolu kullanıcı Günlük Geçiş Onay bilgisi gönderilemedi, Devam etmek istiyor musunuz?"_s);
                if (!visit.askToContinue(question))
                    return PanelWalk::PanelOutcome::Stop;
            }
            visit.progress(i + 1, total);
        }
        return PanelWalk::PanelOutcome::Succeeded;
    });
    result.membersFailed = failed;
    return result;
}

WalkResult DailyPermissionTransfer::reset(bool toPanels)
{
    const DailyPermissionRepository repository(m_context.db);
    QString error;
    if (repository.resetAll(&error) < 0) {
        qWarning().noquote() << "daily approval reset:" << error;
        return { WalkResult::Outcome::Refused };
    }
    if (!toPanels)
        return {};
    const QList<DailyPermissionRepository::Member> members = repository.membersNeedingApproval(&error);
    if (!error.isEmpty()) {
        qWarning().noquote() << "daily approval reset:" << error;
        return { WalkResult::Outcome::Refused };
    }
    if (members.isEmpty())
        return {};
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.target = PanelTarget::All;
    plan.allDone = Message();
    plan.linkFailure = PanelWalk::LinkFailure::ReportAndContinue;
    // Unattended: a panel that fails is noted and the walk goes on.
    int failed = 0;
    WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        for (const DailyPermissionRepository::Member& member : members) {
            if (!SendDailyApproval(visit.link(), visit.address(), member.id, false).isAccepted()) {
                ++failed;
                qWarning().noquote() << "daily approval reset: panel" << visit.panelNumber() << "user" << member.id;
            }
        }
        return PanelWalk::PanelOutcome::Succeeded;
    });
    result.membersFailed = failed;
    return result;
}
