#include "operations/configuration/ProgrammedSlotTransfer.h"

#include "operations/configuration/ProgrammedSlotRepository.h"
#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelRoster.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "protocol/CalendarCommands.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace {

PanelWalk::Plan plan(OperationContext& context, const Message& confirmation, QList<ProgrammedSlot>& slotList)
{
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
    return p;
}

} // namespace

ProgrammedSlotTransfer::ProgrammedSlotTransfer(OperationContext& context)
    : m_context(context)
{ }

WalkResult ProgrammedSlotTransfer::send()
{
    QList<ProgrammedSlot> slotList;
    int failed = 0;
    WalkResult result
        = PanelWalk(m_context,
                    plan(m_context, Message(u"Programlı kapı işlemlerini seçilen panele göndermek istiyor musunuz?"_s),
                         slotList))
              .run([&](PanelVisit& visit) {
                  const int total = static_cast<int>(slotList.size());
                  visit.progress(0, total);
                  for (int i = 0; i < total; ++i) {
                      const ProgrammedSlot& slot = slotList.at(i);
                      if (!SendProgrammedSlot(visit.link(), visit.address(), slot).isAccepted()) {
                          ++failed;
                          const Message question
                              = Message()
                                    .value(slot.weekday)
                                    .add(
                                        u" gününe ilişkin programlanmış işlemler gönderilemedi, Devam etmek istiyor musunuz?"_s);
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

WalkResult ProgrammedSlotTransfer::receive()
{
    QList<ProgrammedSlot> slotList;
    int failed = 0;
    WalkResult result
        = PanelWalk(m_context,
                    plan(m_context, Message(u"Seçilen panel için programlanmış işlemleri almak istiyor musunuz?"_s),
                         slotList))
              .run([&](PanelVisit& visit) {
                  const ProgrammedSlotRepository repository(visit.context().db);
                  const int total = static_cast<int>(slotList.size());
                  visit.progress(0, total);
                  for (int i = 0; i < total; ++i) {
                      ProgrammedSlot slot = slotList.at(i);
                      const CommandResult<QByteArray> answer
                          = ReadProgrammedSlot(visit.link(), visit.address(), slot.weekday, slot.slot);
                      // Only a whole answer reaches the row; a cut or garbled one counts as not received.
                      bool stored = answer.isAccepted() && ParseReadSlotAnswer(answer.data(), slot);
                      if (stored) {
                          const ProgrammedSlotRepository::Result written
                              = repository.storeReceived(visit.panelNumber(), slot);
                          if (!written.ok)
                              qWarning().noquote() << "programmed slot" << slot.weekday << slot.slot << written.error;
                          stored = written.ok;
                      }
                      if (!stored) {
                          ++failed;
                          const Message question
                              = Message()
                                    .value(slot.weekday)
                                    .add(
                                        u" gününe ilişkin programlanmış işlemler alınamadı, Devam etmek istiyor musunuz?"_s);
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
