#include "operations/configuration/GroupCalendarTransfer.h"

#include "operations/configuration/GroupCalendarRepository.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/CalendarCommands.h"

using namespace Qt::StringLiterals;

GroupCalendarTransfer::GroupCalendarTransfer(OperationContext& context)
    : m_context(context)
{ }

WalkResult GroupCalendarTransfer::send(PanelTarget target)
{
    const bool all = target == PanelTarget::All;
    QList<GroupCalendarRow> calendars;
    PanelWalk::Plan plan;
    plan.confirmation = all ? Message(u"Geçiş grup takvimini tüm panellere göndermek istiyor musunuz?"_s)
                            : Message(u"Geçiş grup takvimini seçilen panele göndermek istiyor musunuz?"_s);
    plan.target = target;
    plan.selectedSucceeded = Message(u"Tüm işlemler tamamlandı!"_s);
    plan.afterRights = [&] {
        QString error;
        calendars = GroupCalendarRepository(m_context.db).list(&error);
        if (!error.isEmpty())
            return Message(u"Hata, İşlem tamamlanamadı!"_s);
        if (calendars.isEmpty())
            return Message(u"Geçiş grup takvimi listesi boş!"_s);
        return Message();
    };
    int failed = 0;
    WalkResult result = PanelWalk(m_context, plan).run([&](PanelVisit& visit) {
        for (const GroupCalendarRow& row : std::as_const(calendars)) {
            if (SendGroupCalendar(visit.link(), visit.address(), row.record).isAccepted())
                continue;
            ++failed;
            const Message question
                = Message()
                      .value(row.record.number)
                      .add(u" nolu geçiş grup takvimi gönderilemedi, Devam etmek istiyor musunuz?"_s);
            if (!visit.askToContinue(question))
                return PanelWalk::PanelOutcome::Stop;
        }
        return PanelWalk::PanelOutcome::Succeeded;
    });
    result.membersFailed = failed;
    return result;
}
