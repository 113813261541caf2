#include "operations/configuration/ProgrammedSlotTransfer.h"

#include "operations/configuration/ProgrammedSlotRepository.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/CalendarCommands.h"

#include <QDebug>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

// Walks the selected panel's stored slots in order; a slot for which oneSlot fails is counted and
// asked about by its weekday ("<weekday><failedText>"): go on or stop.
WalkResult walkSlots(OperationContext& context, const Message& confirmation, const QString& failedText,
                     const std::function<bool(PanelVisit&, ProgrammedSlot&)>& oneSlot)
{
    QList<ProgrammedSlot> slotList;
    PanelWalk::Plan p;
    p.confirmation = confirmation;
    p.target = PanelTarget::Selected;
    p.selectedSucceeded = Message(u"Tüm işlemler tamamlandı!"_s);
    p.progress = PanelWalk::Progress::ByMember;
    p.afterRights = [&context, &slotList] {
        const std::optional<PanelEntry> entry = context.roster.selectedEntry();
        QString error;
        slotList
            = entry ? ProgrammedSlotRepository(context.db).panel(entry->panelNumber, &error) : QList<ProgrammedSlot>();
        if (!error.isEmpty())
            return Message(u"Hata, İşlem tamamlanamadı!"_s);
        if (slotList.isEmpty())
            return Message(u"Programlanmış işlemler tablosu boş"_s);
        return Message();
    };
    int failed = 0;
    WalkResult result = PanelWalk(context, p).run([&](PanelVisit& visit) {
        const int total = static_cast<int>(slotList.size());
        visit.progress(0, total);
        for (int i = 0; i < total; ++i) {
            ProgrammedSlot slot = slotList.at(i);
            if (!oneSlot(visit, slot)) {
                ++failed;
                if (!visit.askToContinue(Message().value(slot.weekday).add(failedText)))
                    return PanelWalk::PanelOutcome::Stop;
            }
            visit.progress(i + 1, total);
        }
        return PanelWalk::PanelOutcome::Succeeded;
    });
    result.membersFailed = failed;
    return result;
}

} // namespace

ProgrammedSlotTransfer::ProgrammedSlotTransfer(OperationContext& context)
    : m_context(context)
{ }

WalkResult ProgrammedSlotTransfer::send()
{
    return walkSlots(m_context, Message(u"Programlı kapı işlemlerini seçilen panele göndermek istiyor musunuz?"_s),
                     u" gününe ilişkin programlanmış işlemler gönderilemedi, Devam etmek istiyor musunuz?"_s,
                     [](PanelVisit& visit, ProgrammedSlot& slot) {
                         return SendProgrammedSlot(visit.link(), visit.address(), slot).isAccepted();
                     });
}

WalkResult ProgrammedSlotTransfer::receive()
{
    return walkSlots(m_context, Message(u"Seçilen panel için programlanmış işlemleri almak istiyor musunuz?"_s),
                     u" gününe ilişkin programlanmış işlemler alınamadı, Devam etmek istiyor musunuz?"_s,
                     [](PanelVisit& visit, ProgrammedSlot& slot) {
                         const CommandResult<QByteArray> answer
                             = ReadProgrammedSlot(visit.link(), visit.address(), slot.weekday, slot.slot);
                         // Only a whole answer reaches the row; a cut or garbled one counts as not received.
                         if (!answer.isAccepted() || !ParseReadSlotAnswer(answer.data(), slot))
                             return false;
                         const ProgrammedSlotRepository::Result written
                             = ProgrammedSlotRepository(visit.context().db).storeReceived(visit.panelNumber(), slot);
                         if (!written.ok)
                             qWarning().noquote() << "programmed slot" << slot.weekday << slot.slot << written.error;
                         return written.ok;
                     });
}
